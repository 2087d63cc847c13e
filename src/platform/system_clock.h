#pragma once

#include "base/clock.h"

#include <QTimer>

// Milliseconds since the machine was started, those in which it was suspended included. Never goes
// back; nobody can set it.
[[nodiscard]] qint64 MachineMilliseconds();

// The machine's own time.
class SystemClock : public Clock {
    Q_OBJECT

  public:
    // What became due while the machine was suspended fires at most `latest` milliseconds after it
    // has woken up.
    explicit SystemClock(int latest = 1000);
    [[nodiscard]] qint64 Milliseconds() const override { return MachineMilliseconds(); }
    [[nodiscard]] QDateTime Now() const override;
    void WaitForEvents() override;

  protected:
    void NextDueChanged() override;

  private:
    int longestSleep;
    QTimer alarm;
};
