#pragma once

#include "base/clock.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>

class LoopbackEcho;

// Time that stands still while anything happens and jumps to the next timer when the event loop has
// been quiet for a few real milliseconds. A 45-second limit so passes in milliseconds, and replies
// of a server in this process are never overtaken by a limit.
class TestClock : public Clock {
    Q_OBJECT

  public:
    // Of other processes, which answer sooner or later however busy the machine is.
    static constexpr int Patient = 5000;

    // quiet: real milliseconds without an event before the time jumps; 0: everything happens in
    // this thread.
    explicit TestClock(int quiet = 3);
    ~TestClock() override;
    Q_DISABLE_COPY_MOVE(TestClock)

    [[nodiscard]] qint64 Milliseconds() const override { return now; }
    [[nodiscard]] QDateTime Now() const override { return start.addMSecs(now); }
    // A wait that nothing can end any more, because no timer is armed and no event has come for
    // many real seconds, ends the test with a message.
    void WaitForEvents() override;

    void SetQuiet(int milliseconds);

    // Sets the date and time of day that belong to this moment.
    void SetNow(const QDateTime& time) { start = time.addMSecs(-now); }

    // The machine is suspended for so long and wakes up.
    void Suspend(qint64 milliseconds) { now += milliseconds; }

    // Moves the time on step by step from timer to timer, events handled between the steps.
    void Advance(qint64 milliseconds);

    // Runs until the condition holds; false when `limit` milliseconds of clock time pass before.
    [[nodiscard]] bool RunUntil(const std::function<bool()>& condition, qint64 limit = 600'000);

  protected:
    void NextDueChanged() override {}

  private:
    // Handles events until none has come for the quiet time; false when none came at all.
    bool HandleEvents();

    int quiet = 0;
    std::unique_ptr<LoopbackEcho> echo;
    QElapsedTimer idle;  // real time in which nothing happened nor could
    qint64 now = 1'000'000;
    QDateTime start{QDate(2026, 3, 4), QTime(10, 0)};
};
