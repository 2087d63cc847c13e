#include "support/test_clock.h"

#include "support/loopback_echo.h"

#include <QAbstractEventDispatcher>
#include <QDeadlineTimer>
#include <QSysInfo>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

// Under Wine an event takes its way through another process.
bool UnderWine() {
    return QSysInfo::kernelType() == "winnt";
}

bool Slow() {
    return UnderWine() || qEnvironmentVariableIsSet("STILLPOST_SLOW_TESTS");
}

// Programs there often end only when they are killed, after a silence of this length.
constexpr int longestUnderWine = 1000;

}  // namespace

// Where everything is slow, so are the threads whose events are waited for.
TestClock::TestClock(int quietMilliseconds) {
    SetQuiet(quietMilliseconds);
}

TestClock::~TestClock() = default;

void TestClock::SetQuiet(int milliseconds) {
    quiet = Slow() ? 6 * milliseconds : milliseconds;
    if (UnderWine()) quiet = std::min(quiet, longestUnderWine);
}

bool TestClock::HandleEvents() {
    if (quiet == 0 && UnderWine()) {
        if (!echo) echo = std::make_unique<LoopbackEcho>();
        return echo->HandleEventsBefore();
    }
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    // Without a timer of Qt's, which not every system starts and ends in no time.
    const QDeadlineTimer still(quiet, Qt::PreciseTimer);
    for (;;) {
        if (dispatcher->processEvents(QEventLoop::AllEvents)) return true;
        if (still.hasExpired()) return false;
        std::this_thread::sleep_for(std::chrono::microseconds(250));
    }
}

void TestClock::WaitForEvents() {
    const bool happened = HandleEvents();
    const qint64 next = NextDue();
    constexpr int patience = 20'000;
    if (happened || next >= 0)
        idle.invalidate();
    else if (!idle.isValid())
        idle.start();
    if (idle.isValid() && idle.hasExpired(patience))
        qFatal("Nothing can end this wait: no timer is armed and no event comes.");
    if (happened || next < 0) return;
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
