#pragma once

#include "camera/capture_ffmpeg.h"

#include <QImage>

#include <array>
#include <vector>

struct SwsContext;

// Turns decoded frames of any format into what the program shows and saves. Of interlaced frames
// it takes one field: the other was taken later, and what moves between them would have combs.
// Keeps FFmpeg's conversion tables from one frame to the next and makes new ones when the frames
// change.
class FrameScaler {
  public:
    FrameScaler();
    ~FrameScaler();
    Q_DISABLE_COPY_MOVE(FrameScaler)

    // The frame upright and with square pixels, else in its own size, as Format_BGR888 in memory of
    // pixel_memory.h. A null image when it cannot be converted.
    [[nodiscard]] QImage ToPicture(const AVFrame& frame);

    // The frame for the screen in its proportions, as large as an area of `size` pixels needs it to
    // be filled, but never enlarged; as ToPicture makes it where that is empty. A null image when
    // it cannot be converted.
    [[nodiscard]] QImage ToImage(const AVFrame& frame, QSize size);

    // The mean brightness, 0 to 255; 0 when the frame cannot be converted.
    [[nodiscard]] double Brightness(const AVFrame& frame);

  private:
    // One kind of result, and the tables for it.
    struct Tables {
        SwsContext* Context = nullptr;
        std::array<int, 7> Key = {};
    };
    struct Target {
        AVPixelFormat Format;
        int Width;
        int Height;
        uchar* Top;
        int Step;             // bytes from a row to the one below
        int Orientation = 1;  // of the frame
    };

    [[nodiscard]] bool Convert(Tables& kept, int quality, const AVFrame& frame,
                               const Target& target);
    [[nodiscard]] static bool Prepare(Tables& kept, int quality, const AVFrame& frame, int rows,
                                      const Target& target);
    [[nodiscard]] bool Scale(Tables& kept, int quality, const AVFrame& frame, const Target& target);

    std::array<Tables, 3> tables;
    FramePtr scratch;
};
