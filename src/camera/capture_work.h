#pragma once

#include "camera/capture_session.h"

#include <condition_variable>
#include <mutex>

class QObject;

// What the capture thread and the session share, and the thread's side of it. Held by both, so that
// a thread that was left behind still finds it.
class CaptureWork : public std::enable_shared_from_this<CaptureWork> {
  public:
    // See CaptureSession.
    CaptureWork(CaptureRequest request, std::shared_ptr<CapturePosition> position,
                std::shared_ptr<CaptureWork> previous, QObject& context, CaptureEvents events);

    // The thread: opens, delivers until told to stop, closes.
    void Run();

    // What the session demands of the thread.
    struct Demand {
        bool Frame = false;
        int PreviewRate = 0;
        QSize PreviewSize;
        bool PreviewPending = false;  // one is on its way to the screen
        [[nodiscard]] bool Preview() const { return PreviewRate > 0 && !PreviewPending; }
    };

    // The thread's side.
    [[nodiscard]] bool Stopped() const { return stop; }
    [[nodiscard]] Demand Look();
    // Sleeps until more is demanded than was known, or the time is up; below 0 for no limit.
    void Rest(qint64 milliseconds, const Demand& known);
    // Hands the frame over; an empty one is left. Memory for a picture is kept by one side only.
    void HandOver(Dib& frame);
    void HandOver(const QImage& image, QSize pictureSize);

    // The session's side, on the user-interface thread.
    void Stop();
    void RequestFrame();
    void TakeFrame(Dib& frame);
    void SetPreview(int rate, QSize size);
    bool WaitForEnd(int milliseconds);
    // The end of the work, by itself or because no thread could be started; None is an orderly one.
    void Fail(CaptureFault fault);

  private:
    [[nodiscard]] CaptureFault OpenAndDeliver();
    void Post(std::function<void()> event);

    const CaptureRequest request;
    const std::shared_ptr<CapturePosition> position;
    std::shared_ptr<CaptureWork> previous;
    const CaptureEvents events;

    std::atomic<bool> stop = false;
    std::mutex mutex;
    std::condition_variable changed;
    QObject* context;  // null once nobody listens any more
    Demand demand;
    Dib grabbed;
    bool ended = false;
};
