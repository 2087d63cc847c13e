#include "camera/file_source.h"

extern "C" {
#include <libavutil/rational.h>
}

#include <algorithm>

namespace {

constexpr int stillPace = 1000;

int PaceOf(const AVStream& stream) {
    const double rate = stream.avg_frame_rate.den > 0 ? av_q2d(stream.avg_frame_rate) : 0;
    return rate > 0 ? static_cast<int>(1000 / std::clamp(rate, 0.1, 100.0)) : 40;
}

}  // namespace

FileSource::FileSource(std::unique_ptr<CaptureInput> opened, CapturePosition& ownPosition)
    : input(std::move(opened)),
      position(ownPosition),
      packet(av_packet_alloc()),
      frame(av_frame_alloc()),
      still(input->IsStill()),
      pace(still ? stillPace : PaceOf(input->Stream())) {
    if (!still && position > BeforeFirstPicture) input->Seek(position);
}

int FileSource::Reopen() {
    count = 0;
    atEnd = false;
    return input->Open();
}

// Decodes the next frame; false at the end of the file.
bool FileSource::NextFrame() {
    while (!input->Receive(*frame)) {
        if (atEnd) return false;
        atEnd = input->Read(*packet) < 0;
        input->Decode(atEnd ? nullptr : packet.get());
    }
    return true;
}

// The same, past what has been delivered before.
bool FileSource::NextNewFrame() {
    while (NextFrame()) {
        const bool stamped = frame->best_effort_timestamp != AV_NOPTS_VALUE;
        const qint64 stamp = stamped ? frame->best_effort_timestamp : count;
        ++count;
        if (!still && stamp <= position) continue;
        position = still ? BeforeFirstPicture : stamp;
        return true;
    }
    return false;
}

CaptureSource::Step FileSource::Advance() {
    // The end may come at once, when the file was left at its last picture; a second end without a
    // picture in between means that there is none.
    for (int ends = 0; ends < 2; ++ends) {
        if (!input->IsOpen()) {
            const int result = Reopen();
            if (result < 0) return Fail(FaultOfError(result, input->Request().Kind));
        }
        const bool found = NextNewFrame();
        if (!found || still) input->Close();
        if (found) return Step::Picture;
        if (input->Stopping()) return Step::Nothing;  // that was not the end
        position = BeforeFirstPicture;
    }
    return Fail(CaptureFault::NotAPicture);
}
