#pragma once

#include "platform/capture_devices.h"

#include <memory>

// What a camera's driver tells of raw pictures besides their format.
struct PictureTraits {
    enum class Model { Unknown, Bt601, Bt709, Bt2020, Smpte240 };  // of brightness and colours
    enum class Levels { Unknown, Limited, Full };                  // 16 to 235, or all
    enum class Fields {
        None,         // all rows were taken at once
        Interleaved,  // every second row was taken later
        Stacked,      // the same, and those follow behind the others
        Single,       // every second row is not there
    };
    Model Colours = Model::Unknown;
    Levels Range = Levels::Unknown;
    Fields Rows = Fields::None;
    // The shape of a pixel of the whole picture.
    int PixelWidth = 1;
    int PixelHeight = 1;
};

// A filled buffer of a camera; its bytes stay until the buffer is given back.
struct VideoBuffer {
    int Index = 0;
    const uchar* Bytes = nullptr;
    qsizetype Size = 0;  // bytes filled
};

// A camera that was opened and delivers. It has a handful of buffers: each one taken must be given
// back soon, or pictures are lost. May be used from any one thread; errors are negative values of
// errno.
class VideoDevice {
  public:
    VideoDevice() = default;
    virtual ~VideoDevice() = default;
    VideoDevice(const VideoDevice&) = delete;
    VideoDevice& operator=(const VideoDevice&) = delete;

    // What it delivers, which need not be what was asked for.
    [[nodiscard]] virtual const CaptureFormat& Format() const = 0;
    [[nodiscard]] virtual PictureTraits Traits() const { return {}; }
    // From one row of the picture to the next (of the first plane), bytes; 0 when compressed.
    [[nodiscard]] virtual int RowBytes() const = 0;

    // The oldest picture not taken yet. Returns 0, -EAGAIN when there is none yet, else the error
    // for which no more will come.
    [[nodiscard]] virtual int Take(VideoBuffer& buffer) = 0;
    virtual void GiveBack(int index) = 0;
};
