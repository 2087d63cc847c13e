#include "camera/capture_source.h"

#include "camera/file_source.h"
#include "camera/http_still.h"
#include "camera/live_source.h"
#include "camera/test_picture.h"

namespace {

std::unique_ptr<CaptureSource> OpenInput(const CaptureRequest& request, CapturePosition& position,
                                         const std::atomic<bool>& stop,
                                         std::atomic<quint64>& arrivals, CaptureFault& fault) {
    auto input = std::make_unique<CaptureInput>(request, stop, arrivals);
    const int result = input->Open();
    // What was no picture before may be one the next time.
    if (request.Web && (result < 0 || input->IsStill()))
        request.Web->Is = WebAddress::Kind::Unknown;
    if (result < 0) {
        fault = FaultOfError(result, request.Kind);
        // FFmpeg has one error for all that keeps DirectShow from starting a camera; with a camera
        // that is listed it is this one.
        const bool listed = request.Kind == CaptureKind::Device && !request.Device.Open;
        if (listed && result == AVERROR(EIO)) fault = CaptureFault::Busy;
        return nullptr;
    }
    // Only now: some cameras forget what they were told before they are opened.
    if (request.Device.Adjust && !request.Adjustments.isEmpty())
        request.Device.Adjust(request.Address, request.Adjustments);
    if (input->IsStill() || input->IsVideoFile())
        return std::make_unique<FileSource>(std::move(input), position);
    return std::make_unique<LiveSource>(std::move(input));
}

}  // namespace

std::unique_ptr<CaptureSource> OpenCaptureSource(const CaptureRequest& request,
                                                 CapturePosition& position,
                                                 const std::atomic<bool>& stop,
                                                 std::atomic<quint64>& arrivals,
                                                 CaptureFault& fault) {
    fault = CaptureFault::None;
    if (request.Kind == CaptureKind::Test) {
        const QSize size = TestPicture::ParseAddress(request.Address);
        if (!size.isEmpty()) return std::make_unique<TestPicture>(size, position);
        fault = CaptureFault::BadAddress;
        return nullptr;
    }
    if (HttpStill::MayBe(request)) {
        auto still = std::make_unique<HttpStill>(request, stop, arrivals);
        if (still->Open()) return still;
        fault = still->Fault();
        if (fault != CaptureFault::None || stop) return nullptr;
    }
    return OpenInput(request, position, stop, arrivals, fault);
}
