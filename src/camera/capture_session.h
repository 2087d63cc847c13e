#pragma once

#include "camera/capture_source.h"
#include "camera/dib.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>

class CaptureWork;

// What a session tells, on the thread of the object that it was given.
struct CaptureEvents {
    std::function<void()> Grabbed;  // the frame that was asked for can be taken
    std::function<void(const QImage& image, QSize pictureSize)> Preview;
    std::function<void(CaptureFault)> Failed;  // the device is closed, nothing more will come
};

// A source while it is open, on a thread of its own. Opening, reading and closing never hold up the
// user interface: a thread that is stuck (in a name lookup, say) is left to end by itself, and its
// events are dropped.
class CaptureSession {
  public:
    // context: lives on the user-interface thread and outlives the session. position: where the
    // source goes on. previous: the work of the session before, whose end is awaited (for a second
    // at most) because a device can be opened only once; may be null.
    CaptureSession(const CaptureRequest& request, std::shared_ptr<CapturePosition> position,
                   const std::shared_ptr<CaptureWork>& previous, QObject& context,
                   CaptureEvents events);
    // Tells the thread to end, and does not wait.
    ~CaptureSession();
    Q_DISABLE_COPY_MOVE(CaptureSession)

    // Asks for one frame newer than the last that was asked for.
    void RequestFrame();
    // Takes the frame that came; empty when it was taken before.
    void TakeFrame(Dib& frame);
    // rate: pictures a second, 0 for none; size: pixels to scale to, empty for none.
    void SetPreview(int rate, QSize size);

    [[nodiscard]] std::shared_ptr<CaptureWork> Work() const { return work; }
    // Waits until the work has ended, for `milliseconds` at most. Returns whether it has.
    static bool WaitForEnd(CaptureWork& work, int milliseconds);

  private:
    std::shared_ptr<CaptureWork> work;
};
