#pragma once

#include "camera/capture_input.h"
#include "camera/packet_backlog.h"

#include <chrono>

// A camera or a network stream: it delivers at its own pace, and only its newest picture counts.
class LiveSource : public CaptureSource {
  public:
    // input: open.
    explicit LiveSource(std::unique_ptr<CaptureInput> input);

    [[nodiscard]] bool Live() const override { return true; }
    [[nodiscard]] bool IsDevice() const override { return device; }
    [[nodiscard]] Step Advance() override;
    [[nodiscard]] const AVFrame* Picture(bool keyWillDo) override;

  private:
    [[nodiscard]] bool Take();
    [[nodiscard]] bool Decode(const AVPacket& oldest);
    [[nodiscard]] Step Broken(int error);

    std::unique_ptr<CaptureInput> input;
    bool device;
    PacketPtr packet;
    PacketBacklog pending;    // since the last picture that stands for itself
    bool keyPending = false;  // pending begins with such a picture
    bool skipped = false;     // something was left out before it
    std::chrono::steady_clock::time_point keyCame;
    FramePtr frame;
    FramePtr decoding;
    bool decoded = false;
    int unreadable = 0;
};
