#pragma once

#include "base/detached_thread.h"
#include "camera/capture_source.h"

#include <QImage>
#include <QSize>
#include <QWaitCondition>

#include <functional>
#include <memory>

// What a session tells, on the thread of the object that it was given.
struct CaptureEvents {
    // The frame that was asked for; also one of a slow source that nobody has asked for.
    std::function<void(QImage&& frame)> Grabbed;
    std::function<void(const QImage& image, QSize pictureSize)> Preview;
    std::function<void(CaptureFault)> Failed;  // the device is closed, nothing more will come
};

// A source while it is open, on a thread of its own. Opening, reading and closing never hold up the
// user interface: a thread that is stuck (in a name lookup, say) is left to end by itself, and its
// events are dropped. Held by its user and by its thread.
class CaptureSession : public std::enable_shared_from_this<CaptureSession> {
  public:
    // context: lives on the user-interface thread and outlives the session's use. position: where
    // the source goes on. previous: the session before, whose end is awaited (for a second at most)
    // because a device can be opened only once; may be null.
    [[nodiscard]] static std::shared_ptr<CaptureSession> Start(
        const CaptureRequest& request, const std::shared_ptr<CapturePosition>& position,
        const std::shared_ptr<CaptureSession>& previous, QObject& context,
        const CaptureEvents& events);

    // For the user, on the user-interface thread.
    // Tells the thread to end, and does not wait; no event comes any more.
    void Stop();
    // Asks for one frame newer than the last that was asked for. fresh: only what comes from now on
    // will do.
    void RequestFrame(bool fresh);
    // rate: pictures a second, 0 for none; size: pixels to scale to, empty for none.
    void SetPreview(int rate, QSize size);
    // Waits until the device is closed, for `milliseconds` at most.
    void WaitForEnd(int milliseconds);
    // How often something has come from the source, its opening counted: it is alive while this
    // grows.
    [[nodiscard]] quint64 Arrivals() const { return arrivals; }

    // What the user wants to have.
    struct Demand {
        bool Frame = false;
        quint64 FrameAfter = 0;  // the arrival after which it must have come
        int PreviewRate = 0;
        QSize PreviewSize;
        bool PreviewPending = false;  // one is on its way to the screen
        [[nodiscard]] bool Preview() const { return PreviewRate > 0 && !PreviewPending; }
    };

    // For the capture thread.
    [[nodiscard]] bool Stopped() const { return stop; }
    [[nodiscard]] Demand Look();
    // Sleeps until more is demanded than was known, or the time is up; below 0 for no limit.
    void Rest(qint64 milliseconds, const Demand& known);
    void CountArrival() { ++arrivals; }
    void HandOver(QImage&& frame);
    void HandOver(const QImage& image, QSize pictureSize);

  private:
    CaptureSession(const CaptureRequest& request, const std::shared_ptr<CapturePosition>& position,
                   const std::shared_ptr<CaptureSession>& previous, QObject& context,
                   const CaptureEvents& events);

    // The thread: opens, delivers until told to stop, closes.
    void Run();
    [[nodiscard]] CaptureFault OpenAndDeliver();

    const CaptureRequest request;
    const std::shared_ptr<CapturePosition> position;
    std::shared_ptr<CaptureSession> previous;
    const CaptureEvents events;
    const WayBack way;

    std::atomic<bool> stop = false;
    std::atomic<quint64> arrivals = 0;
    QMutex mutex;  // of what follows
    QWaitCondition changed;
    Demand demand;
    bool ended = false;
};
