#include "camera/capture_work.h"

#include "camera/capture_delivery.h"

#include <QMetaObject>

#include <chrono>
#include <utility>

namespace {
constexpr int patienceWithPrevious = 1000;  // milliseconds
}

CaptureWork::CaptureWork(CaptureRequest wanted, std::shared_ptr<CapturePosition> ownPosition,
                         std::shared_ptr<CaptureWork> before, QObject& listener,
                         CaptureEvents ownEvents)
    : request(std::move(wanted)),
      position(std::move(ownPosition)),
      previous(std::move(before)),
      events(std::move(ownEvents)),
      context(&listener) {}

void CaptureWork::Run() {
    if (previous) previous->WaitForEnd(patienceWithPrevious);
    previous.reset();
    // The device is closed when anybody hears of the end.
    const CaptureFault fault = OpenAndDeliver();
    Fail(fault);
}

CaptureFault CaptureWork::OpenAndDeliver() {
    if (stop) return CaptureFault::None;
    CaptureFault fault = CaptureFault::None;
    const auto source = OpenCaptureSource(request, *position, stop, fault);
    return source ? CaptureDelivery(*this, *source).Run() : fault;
}

void CaptureWork::Fail(CaptureFault fault) {
    if (fault != CaptureFault::None) Post([this, fault] { events.Failed(fault); });
    const std::lock_guard lock(mutex);
    if (stop) grabbed = Dib();  // the work may be kept for long after its end
    ended = true;
    changed.notify_all();
}

void CaptureWork::Stop() {
    const std::lock_guard lock(mutex);
    stop = true;
    context = nullptr;
    changed.notify_all();
}

void CaptureWork::RequestFrame() {
    const std::lock_guard lock(mutex);
    demand.Frame = true;
    changed.notify_all();
}

void CaptureWork::TakeFrame(Dib& frame) {
    const std::lock_guard lock(mutex);
    frame = std::exchange(grabbed, Dib());
}

void CaptureWork::SetPreview(int rate, QSize size) {
    const std::lock_guard lock(mutex);
    demand.PreviewRate = rate;
    demand.PreviewSize = size;
    changed.notify_all();
}

bool CaptureWork::WaitForEnd(int milliseconds) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                            [this] { return ended; });
}

CaptureWork::Demand CaptureWork::Look() {
    const std::lock_guard lock(mutex);
    return demand;
}

void CaptureWork::Rest(qint64 milliseconds, const Demand& known) {
    std::unique_lock lock(mutex);
    const auto more = [this, &known] {
        return stop || (demand.Frame && !known.Frame) || (demand.Preview() && !known.Preview()) ||
               demand.PreviewRate != known.PreviewRate;
    };
    if (milliseconds < 0)
        changed.wait(lock, more);
    else
        changed.wait_for(lock, std::chrono::milliseconds(milliseconds), more);
}

void CaptureWork::HandOver(Dib& frame) {
    {
        const std::lock_guard lock(mutex);
        grabbed = std::exchange(frame, Dib());
        demand.Frame = false;
    }
    Post([this] { events.Grabbed(); });
}

void CaptureWork::HandOver(const QImage& image, QSize pictureSize) {
    {
        const std::lock_guard lock(mutex);
        demand.PreviewPending = true;
    }
    Post([this, image, pictureSize] {
        {
            const std::lock_guard lock(mutex);
            demand.PreviewPending = false;
            changed.notify_all();
        }
        events.Preview(image, pictureSize);
    });
}

// Has the event happen on the context's thread, unless the session is gone by then.
void CaptureWork::Post(std::function<void()> event) {
    const std::lock_guard lock(mutex);
    if (!context) return;
    QMetaObject::invokeMethod(
        context,
        [own = shared_from_this(), event = std::move(event)] {
            if (!own->stop) event();
        },
        Qt::QueuedConnection);
}
