#pragma once

#include "base/clock.h"
#include "base/status_display.h"

// Remembers what was shown last, so that the status window is up to date when it is opened. The
// time-out is left out: the next second brings it.
class StatusMemory : public StatusDisplay {
  public:
    // The clock outlives the memory. The running time counts from now.
    explicit StatusMemory(const Clock& ownClock)
        : clock(ownClock), runningSince(ownClock.Milliseconds()) {}

    // Empty until the program has shown something.
    QString Status;
    QString Recording;
    QString PictureCount = "Pic: 0";
    QString Megabytes = "MB: 0";
    bool Online = false;
    int Upload = 0;  // per cent

    // Milliseconds since the last start.
    [[nodiscard]] qint64 RunningTime() const { return clock.Milliseconds() - runningSince; }

    [[nodiscard]] bool InUse() const override { return true; }
    void ShowStatus(const QString& text) override { Status = text; }
    void ShowOnline(bool online) override { Online = online; }
    void ShowRecording(const QString& text) override { Recording = text; }
    void ShowUpload(int percent) override { Upload = percent; }
    void ShowPictureCount(const QString& text) override { PictureCount = text; }
    void ShowMegabytes(const QString& text) override { Megabytes = text; }
    void ResetRunningTime() override { runningSince = clock.Milliseconds(); }

  private:
    const Clock& clock;
    qint64 runningSince;
};
