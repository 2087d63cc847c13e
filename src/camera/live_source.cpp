#include "camera/live_source.h"
#include "camera/whole_picture.h"

#include <chrono>

namespace {
constexpr int mostAtOnce = 64;       // packets taken before somebody else has a turn
constexpr int mostUnreadable = 100;  // packets in a row before the stream counts as broken
constexpr std::chrono::milliseconds longestTurn(20);
}  // namespace

LiveSource::LiveSource(std::unique_ptr<CaptureInput> opened)
    : input(std::move(opened)),
      device(input->Request().Kind == CaptureKind::Device),
      packet(av_packet_alloc()),
      newest(av_packet_alloc()),
      frame(av_frame_alloc()),
      decoding(av_frame_alloc()) {}

CaptureSource::Step LiveSource::Advance() {
    Step step = Step::Nothing;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < mostAtOnce && !input->Stopping(); ++i) {
        const int result = input->Read(*packet);
        if (result == AVERROR(EAGAIN)) break;
        if (result == AVERROR_INVALIDDATA && ++unreadable < mostUnreadable) break;
        if (result < 0) return Broken(result);
        unreadable = 0;
        if (Take())
            step = Step::Picture;
        else if (step == Step::Nothing)
            step = Step::Data;
        // Reading from the network waits for what has not come yet, and so does a device whose
        // driver knows nothing else.
        if (!device || std::chrono::steady_clock::now() - start > longestTurn) break;
    }
    return step;
}

// Keeps what was read if it makes a newer picture.
bool LiveSource::Take() {
    if (input->IntraOnly()) {
        if (!PacketWhole(*packet, *input->Stream().codecpar)) return false;
        av_packet_unref(newest.get());
        av_packet_move_ref(newest.get(), packet.get());
        // A frame may lie in one of the few buffers that the camera has.
        av_frame_unref(frame.get());
        decoded = false;
        return true;
    }
    input->Decode(packet.get());
    bool fresh = false;
    while (input->Receive(*decoding)) {
        std::swap(frame, decoding);
        fresh = decoded = true;
    }
    return fresh;
}

const AVFrame* LiveSource::Picture() {
    if (!decoded && input->IntraOnly() && newest->size > 0) {
        input->Decode(newest.get());
        decoded = input->Receive(*frame);
        av_packet_unref(newest.get());
    }
    return decoded ? frame.get() : nullptr;
}

CaptureSource::Step LiveSource::Broken(int error) {
    const CaptureFault why = FaultOfError(error, input->Request().Kind);
    return Fail(why == CaptureFault::NotConnected ? why : CaptureFault::Lost);
}
