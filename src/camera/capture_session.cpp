#include "camera/capture_session.h"

#include "camera/capture_delivery.h"

#include <QDeadlineTimer>

#include <utility>

namespace {
constexpr int patienceWithPrevious = 1000;  // milliseconds
}

CaptureSession::CaptureSession(const CaptureRequest& wanted,
                               const std::shared_ptr<CapturePosition>& ownPosition,
                               const std::shared_ptr<CaptureSession>& before, QObject& context,
                               const CaptureEvents& ownEvents)
    : request(wanted), position(ownPosition), previous(before), events(ownEvents), way(context) {}

std::shared_ptr<CaptureSession> CaptureSession::Start(
    const CaptureRequest& request, const std::shared_ptr<CapturePosition>& position,
    const std::shared_ptr<CaptureSession>& previous, QObject& context,
    const CaptureEvents& events) {
    const std::shared_ptr<CaptureSession> session(
        new CaptureSession(request, position, previous, context, events));
    StartDetached([session] { session->Run(); });
    return session;
}

void CaptureSession::Run() {
    if (previous) previous->WaitForEnd(patienceWithPrevious);
    previous.reset();
    // The device is closed when anybody hears of the end.
    const CaptureFault fault = OpenAndDeliver();
    if (fault != CaptureFault::None)
        way.Post([own = shared_from_this(), fault] { own->events.Failed(fault); });
    const QMutexLocker lock(&mutex);
    ended = true;
    changed.wakeAll();
}

CaptureFault CaptureSession::OpenAndDeliver() {
    if (stop) return CaptureFault::None;
    CaptureFault fault = CaptureFault::None;
    const auto source = OpenCaptureSource(request, *position, stop, arrivals, fault);
    return source ? CaptureDelivery(*this, *source).Run() : fault;
}

void CaptureSession::Stop() {
    way.Close();
    const QMutexLocker lock(&mutex);
    stop = true;
    changed.wakeAll();
}

void CaptureSession::RequestFrame(bool fresh) {
    const QMutexLocker lock(&mutex);
    demand.Frame = true;
    demand.FrameAfter = fresh ? arrivals.load() : 0;
    changed.wakeAll();
}

void CaptureSession::SetPreview(int rate, QSize size) {
    const QMutexLocker lock(&mutex);
    demand.PreviewRate = rate;
    demand.PreviewSize = size;
    changed.wakeAll();
}

void CaptureSession::WaitForEnd(int milliseconds) {
    const QDeadlineTimer limit(milliseconds);
    const QMutexLocker lock(&mutex);
    while (!ended && changed.wait(&mutex, limit)) {
    }
}

CaptureSession::Demand CaptureSession::Look() {
    const QMutexLocker lock(&mutex);
    return demand;
}

void CaptureSession::Rest(qint64 milliseconds, const Demand& known) {
    const QDeadlineTimer limit(milliseconds);
    const QMutexLocker lock(&mutex);
    const auto more = [this, &known] {
        return stop || (demand.Frame && !known.Frame) || (demand.Preview() && !known.Preview()) ||
               demand.PreviewRate != known.PreviewRate;
    };
    while (!more() && changed.wait(&mutex, limit)) {
    }
}

void CaptureSession::HandOver(QImage&& frame) {
    {
        const QMutexLocker lock(&mutex);
        demand.Frame = false;
    }
    way.Post([own = shared_from_this(), kept = std::move(frame)]() mutable {
        own->events.Grabbed(std::move(kept));
    });
}

void CaptureSession::HandOver(const QImage& image, QSize pictureSize) {
    {
        const QMutexLocker lock(&mutex);
        demand.PreviewPending = true;
    }
    way.Post([own = shared_from_this(), image, pictureSize] {
        {
            const QMutexLocker lock(&own->mutex);
            own->demand.PreviewPending = false;
            own->changed.wakeAll();
        }
        own->events.Preview(image, pictureSize);
    });
}
