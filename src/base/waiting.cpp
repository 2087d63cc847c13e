#include "base/waiting.h"

#include "base/clock.h"

#include <QCoreApplication>

#include <algorithm>

Waiting::Waiting(Clock& ownClock) : clock(ownClock) {}

Waiting::End Waiting::Until(const std::function<bool()>& done, const WaitTerms& terms) {
    const qint64 start = clock.Milliseconds();
    // Wakes the sleeping loop: once a second for the pass routine, and when the limit is reached.
    Timer wakeUp(clock, 1000);
    Timer limitReached(clock, 1);
    if (terms.EveryPass) wakeUp.SetEnabled(true);
    if (terms.LimitMilliseconds) {
        limitReached.SetInterval(
            static_cast<int>(std::clamp<qint64>(*terms.LimitMilliseconds, 1, 2'000'000'000)));
        limitReached.SetEnabled(true);
    }

    ++depth;
    End end = End::Done;
    for (;;) {
        const qint64 elapsed = clock.Milliseconds() - start;
        if (terms.EveryPass) terms.EveryPass(elapsed);
        if (done()) break;
        if (closing) {
            end = End::Closing;
            break;
        }
        if (terms.LimitMilliseconds && elapsed >= *terms.LimitMilliseconds) {
            end = End::Limit;
            break;
        }
        if (terms.Hopeless && terms.Hopeless()) {
            end = End::Hopeless;
            break;
        }
        clock.WaitForEvents();
    }
    Leave();
    return end;
}

bool Waiting::Seconds(int seconds) {
    const End end = Until([] { return false; }, {.LimitMilliseconds = seconds * 1000LL});
    return end == End::Limit;
}

void Waiting::Yield() {
    ++depth;
    QCoreApplication::processEvents();
    Leave();
}

void Waiting::Leave() {
    if (--depth > 0) return;
    // A wait puts off what was to be deleted later, and the loop above does not look at that again
    // before the next posted event: without windows there may be none for months.
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    emit Idle();
}

void Waiting::Close() {
    closing = true;
    // A sleeping wait wakes up on any posted event.
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}
