#include "platform/system_clock.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <algorithm>

SystemClock::SystemClock(int latest) : longestSleep(latest) {
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    connect(&alarm, &QTimer::timeout, this, &SystemClock::FireDue);
}

QDateTime SystemClock::Now() const {
    return QDateTime::currentDateTime();
}

void SystemClock::WaitForEvents() {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

// Qt's timers stand still while the machine is suspended, so what is hours away is looked at again
// and again. That costs nothing: the program has a timer that ticks each second anyway.
void SystemClock::NextDueChanged() {
    const qint64 next = NextDue();
    if (next < 0) {
        alarm.stop();
        return;
    }
    alarm.start(static_cast<int>(std::clamp<qint64>(next - Milliseconds(), 0, longestSleep)));
}
