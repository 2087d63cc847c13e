#pragma once

#include "camera/capture_input.h"

// A video file, which starts again at its end, or one picture, which is fetched anew each time.
class FileSource : public CaptureSource {
  public:
    // input: open; position: time stamp of the picture to go on after.
    FileSource(std::unique_ptr<CaptureInput> input, CapturePosition& position);

    [[nodiscard]] bool Live() const override { return false; }
    [[nodiscard]] int Pace() const override { return pace; }
    [[nodiscard]] Step Advance() override;
    [[nodiscard]] const AVFrame* Picture(bool /*keyWillDo*/) override { return frame.get(); }

  private:
    [[nodiscard]] int Reopen();
    [[nodiscard]] bool NextFrame();
    [[nodiscard]] bool NextNewFrame();

    std::unique_ptr<CaptureInput> input;
    CapturePosition& position;
    PacketPtr packet;
    FramePtr frame;
    bool still;
    int pace;
    qint64 count = 0;  // pictures since the start, for files without time stamps
    bool atEnd = false;
};
