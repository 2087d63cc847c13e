#include "base/clock.h"

#include <algorithm>

void Clock::FireDue() {
    while (!armed.empty() && armed.begin()->first <= Milliseconds()) {
        Timer* timer = armed.begin()->second;
        armed.erase(armed.begin());
        timer->Fire();
    }
    NextDueChanged();
}

qint64 Clock::NextDue() const {
    return armed.empty() ? -1 : armed.begin()->first;
}

void Clock::Arm(Timer& timer, qint64 due) {
    armed.emplace(due, &timer);
    NextDueChanged();
}

void Clock::Disarm(const Timer& timer) {
    std::erase_if(armed, [&timer](const auto& entry) { return entry.second == &timer; });
    NextDueChanged();
}

Timer::Timer(Clock& ownClock, int milliseconds, QObject* parent)
    : QObject(parent), clock(ownClock), interval(std::max(1, milliseconds)) {}

Timer::~Timer() {
    clock.Disarm(*this);
}

void Timer::SetInterval(int milliseconds) {
    interval = std::max(1, milliseconds);
    if (!enabled) return;
    clock.Disarm(*this);
    due = clock.Milliseconds() + interval;
    clock.Arm(*this, due);
}

void Timer::SetEnabled(bool on) {
    if (on == enabled) return;
    enabled = on;
    clock.Disarm(*this);
    if (!on) return;
    due = clock.Milliseconds() + interval;
    clock.Arm(*this, due);
}

void Timer::Fire() {
    // Armed again before the handler runs, because the handler may wait for longer than the
    // interval. A tick that came late does not shift the following ones, but ticks that were
    // missed altogether (a suspended machine) are not made up for.
    const qint64 now = clock.Milliseconds();
    due = due + interval > now ? due + interval : now + interval;
    clock.Arm(*this, due);
    emit Tick();
}
