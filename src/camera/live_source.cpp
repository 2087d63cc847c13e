#include "camera/live_source.h"
#include "camera/whole_picture.h"

#include <utility>

namespace {
constexpr int mostAtOnce = 64;       // packets taken before somebody else has a turn
constexpr int mostUnreadable = 100;  // packets in a row before the stream counts as broken
constexpr std::chrono::milliseconds longestTurn(20);
constexpr std::chrono::seconds freshKey(5);
}  // namespace

LiveSource::LiveSource(std::unique_ptr<CaptureInput> opened)
    : input(std::move(opened)),
      device(input->Request().Kind == CaptureKind::Device),
      packet(av_packet_alloc()),
      pending([this](const AVPacket& oldest) { return Decode(oldest); }),
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
    const bool intra = input->IntraOnly();
    // Drivers mark every picture as one that stands for itself.
    const bool key = intra || (!device && packet->flags & AV_PKT_FLAG_KEY);
    if (intra && !PacketWhole(*packet, *input->Stream().codecpar)) return false;
    if (key) {
        skipped = skipped || !pending.Empty();
        pending.Clear();
        keyPending = true;
        keyCame = std::chrono::steady_clock::now();
    }
    // A frame may lie in one of the few buffers that the camera has.
    if (intra) av_frame_unref(frame.get());
    decoded = false;
    pending.Add(*packet);
    return true;
}

// Whether that gave a newer frame.
bool LiveSource::Decode(const AVPacket& oldest) {
    keyPending = false;
    if (std::exchange(skipped, false) && !input->IntraOnly()) input->SkipToKey();
    input->Decode(&oldest);
    bool fresh = false;
    while (input->Receive(*decoding)) {
        std::swap(frame, decoding);
        fresh = true;
    }
    return fresh;
}

const AVFrame* LiveSource::Picture(bool keyWillDo) {
    const bool key =
        keyWillDo && keyPending && std::chrono::steady_clock::now() - keyCame <= freshKey;
    while (!pending.Empty() && !(key && decoded) && !input->Stopping())
        decoded = pending.DecodeOldest() || decoded;
    return decoded ? frame.get() : nullptr;
}

CaptureSource::Step LiveSource::Broken(int error) {
    const CaptureFault why = FaultOfError(error, input->Request().Kind);
    return Fail(why == CaptureFault::NotConnected ? why : CaptureFault::Lost);
}
