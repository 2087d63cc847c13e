#pragma once

#include "camera/capture_input.h"

// A camera or a network stream: it delivers at its own pace, and only its newest picture counts.
class LiveSource : public CaptureSource {
  public:
    // input: open.
    explicit LiveSource(std::unique_ptr<CaptureInput> input);

    [[nodiscard]] bool Live() const override { return true; }
    [[nodiscard]] bool IsDevice() const override { return device; }
    [[nodiscard]] Step Advance() override;
    [[nodiscard]] const AVFrame* Picture() override;

  private:
    [[nodiscard]] bool Take();
    [[nodiscard]] Step Broken(int error);

    std::unique_ptr<CaptureInput> input;
    bool device;
    PacketPtr packet;
    PacketPtr newest;  // where pictures stand for themselves; decoded when asked for
    FramePtr frame;
    FramePtr decoding;
    bool decoded = false;
    int unreadable = 0;
};
