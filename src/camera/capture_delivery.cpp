#include "camera/capture_delivery.h"

#include "camera/frame_geometry.h"

#include <algorithm>
#include <utility>

namespace {
constexpr qint64 restWanted = 4;     // somebody waits for the next picture
constexpr qint64 restSettling = 15;  // every picture counts, but nobody looks at it
constexpr qint64 restIdle = 100;     // a device keeps a few pictures by itself
constexpr qint64 longDistance = 2000;
}  // namespace

CaptureDelivery::CaptureDelivery(CaptureSession& ownSession, CaptureSource& ownSource)
    : session(ownSession),
      source(ownSource),
      start(std::chrono::steady_clock::now()),
      settled(!source.IsDevice()) {}

qint64 CaptureDelivery::Elapsed() const {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now() - start).count();
}

CaptureFault CaptureDelivery::Run() {
    session.CountArrival();  // it has answered
    while (!session.Stopped()) {
        const bool goesOn = source.Live() ? ServeLive() : ServeOnDemand();
        if (!goesOn) return source.Fault();
    }
    return CaptureFault::None;
}

bool CaptureDelivery::ServeLive() {
    const CaptureSource::Step step = source.Advance();
    if (step == CaptureSource::Step::Failed) return false;
    if (step != CaptureSource::Step::Nothing) session.CountArrival();
    if (step == CaptureSource::Step::Picture) {
        newForGrab = newForPreview = true;
        arrival = session.Arrivals();
        slow = Elapsed() - std::exchange(lastPicture, Elapsed()) >= longDistance;
        if (!settled) WatchExposure();
    }
    // Only now: somebody may have asked while it was read. A picture that is long in coming is
    // handed over unasked, because who asks next would wait for another one.
    const CaptureSession::Demand demand = session.Look();
    const bool wanted = slow || (demand.Frame && arrival > demand.FrameAfter);
    const bool grab = wanted && settled && newForGrab;
    const bool preview = demand.Preview() && newForPreview && Elapsed() >= nextPreview;
    if (grab || preview)
        Deliver(demand, grab, preview);
    else if (step == CaptureSource::Step::Nothing && source.IsDevice())
        session.Rest(RestTime(demand), demand);
    return true;
}

bool CaptureDelivery::ServeOnDemand() {
    const CaptureSession::Demand demand = session.Look();
    const qint64 wait = demand.Preview() ? std::max<qint64>(0, nextStep - Elapsed()) : -1;
    if (!demand.Frame && wait != 0) {
        session.Rest(wait, demand);
        return true;
    }
    // It was idle until now, not silent.
    if (!source.CountsArrivals()) session.CountArrival();
    const CaptureSource::Step step = source.Advance();
    if (step == CaptureSource::Step::Failed) return false;
    if (step == CaptureSource::Step::Nothing) return true;
    newForGrab = newForPreview = true;
    // Somebody may have asked while it came.
    const CaptureSession::Demand now = session.Look();
    Deliver(now, now.Frame, now.Preview() && Elapsed() >= nextPreview);
    // Pictures that were missed are not made up for.
    nextStep = std::max(nextStep + source.Pace(), Elapsed());
    return true;
}

void CaptureDelivery::WatchExposure() {
    const AVFrame* const frame = source.Picture(false);
    if (frame) settled = exposure.Feed(Elapsed(), scaler.Brightness(*frame));
}

void CaptureDelivery::Deliver(const CaptureSession::Demand& demand, bool grab, bool preview) {
    const AVFrame* const frame = source.Picture(demand.PreviewRate == 0);
    if (!frame) {
        newForGrab = newForPreview = false;
        return;
    }
    if (preview) {
        newForPreview = false;
        nextPreview = std::max(nextPreview + 1000 / demand.PreviewRate, Elapsed());
        const QImage image = scaler.ToImage(*frame, demand.PreviewSize);
        if (!image.isNull()) session.HandOver(image, GeometryOf(*frame).Shown());
    }
    // Last: the source may give its frame away.
    if (grab) {
        newForGrab = false;
        QImage picture = source.TakePicture();
        if (picture.isNull()) picture = scaler.ToPicture(*frame);
        if (!picture.isNull()) session.HandOver(std::move(picture));
    }
}

qint64 CaptureDelivery::RestTime(const CaptureSession::Demand& demand) const {
    if (demand.Frame) return restWanted;
    if (!settled) return restSettling;
    if (!demand.Preview()) return restIdle;
    return std::clamp(nextPreview - Elapsed(), restSettling, restIdle);
}
