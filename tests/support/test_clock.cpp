#include "support/test_clock.h"

#include <QAbstractEventDispatcher>

TestClock::TestClock(int quietMilliseconds) : quiet(quietMilliseconds) {}

bool TestClock::HandleEvents() {
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher->processEvents(QEventLoop::AllEvents)) return true;
    bool timedOut = false;
    QTimer still;
    still.setSingleShot(true);
    still.setTimerType(Qt::PreciseTimer);
    connect(&still, &QTimer::timeout, &still, [&timedOut] { timedOut = true; });
    still.start(quiet);
    dispatcher->processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return !timedOut;
}

void TestClock::WaitForEvents() {
    if (HandleEvents()) return;
    const qint64 next = NextDue();
    if (next < 0) return;
    now = std::max(now, next);
    FireDue();
}

void TestClock::Advance(qint64 milliseconds) {
    const qint64 target = now + milliseconds;
    for (;;) {
        while (HandleEvents()) {
        }
        const qint64 next = NextDue();
        if (next < 0 || next > target) break;
        now = std::max(now, next);
        FireDue();
    }
    now = std::max(now, target);
}

bool TestClock::RunUntil(const std::function<bool()>& condition, qint64 limit) {
    const qint64 end = now + limit;
    while (!condition()) {
        if (now >= end) return false;
        const qint64 before = now;
        WaitForEvents();
        // Without any timer armed the time still has to pass, or a lost event would hang the test.
        if (now == before && NextDue() < 0) now += 1;
    }
    return true;
}
