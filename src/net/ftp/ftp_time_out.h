#pragma once

#include "base/clock.h"
#include "base/status_display.h"

#include <QObject>

// The limit on the waits of one operation, counted in ticks of one second and shown as a countdown
// during its last 25 seconds. The ticks of several commands add up until somebody calls
// ResetElapsed, so the limit bounds an operation and not each command of it.
class FtpTimeOut : public QObject {
    Q_OBJECT

  public:
    FtpTimeOut(Clock& clock, StatusDisplay& display, QObject* parent = nullptr);

    // Starts counting against a limit of `seconds`, the time spent so far included.
    void Begin(qint16 seconds);
    // Goes on counting against the limit set last.
    void Continue();
    // Stops counting and hides the countdown.
    void Stop();

    void ResetElapsed() { elapsedSeconds = 0; }
    void ClearTimedOut() { timedOut = false; }

    // Whether the limit was passed since the last Begin.
    [[nodiscard]] bool TimedOut() const { return timedOut; }

  private:
    void Tick();
    void Hide();

    StatusDisplay& display;
    Timer tmrTimeOut;
    int elapsedSeconds = 0;
    int timeOutLimit = 0;
    bool timedOut = false;
};
