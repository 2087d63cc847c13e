#include "base/waiting.h"
#include "platform/system_clock.h"
#include "support/test_clock.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

namespace {

// Time that a test sets by hand, as when a machine was suspended.
class HandClock : public Clock {
  public:
    qint64 Time = 0;

    [[nodiscard]] qint64 Milliseconds() const override { return Time; }
    [[nodiscard]] QDateTime Now() const override { return {}; }
    void WaitForEvents() override {}
    void MoveTo(qint64 time) {
        Time = time;
        FireDue();
    }

  protected:
    void NextDueChanged() override {}
};

// The times at which a timer ticked.
struct Ticks {
    explicit Ticks(const Clock& clock, Timer& timer) {
        QObject::connect(&timer, &Timer::Tick, &timer,
                         [this, &clock] { Times << clock.Milliseconds(); });
    }
    QList<qint64> Times;
};

// A clock that jumps and the routine that waits by it.
struct Bench {
    TestClock Time;
    Waiting Wait{Time};
};

bool Never() {
    return false;
}

}  // namespace

class TestClockWaiting : public QObject {
    Q_OBJECT

  private slots:
    void TimerTicks() {
        HandClock clock;
        Timer timer(clock, 100);
        const Ticks ticks(clock, timer);
        clock.MoveTo(1000);
        QVERIFY(ticks.Times.isEmpty());
        timer.SetEnabled(true);
        for (const qint64 time : {1099, 1100, 1199, 1230, 1299, 1300}) clock.MoveTo(time);
        // The one that came late at 1230 does not shift the next.
        QCOMPARE(ticks.Times, (QList<qint64>{1100, 1230, 1300}));
        // Those missed altogether are not made up for.
        for (const qint64 time : {3'600'050, 3'600'149, 3'600'150}) clock.MoveTo(time);
        QCOMPARE(ticks.Times.mid(3), (QList<qint64>{3'600'050, 3'600'150}));
    }

    void TimerTicksWhileItsHandlerWaits() {
        Bench bench;
        Timer timer(bench.Time, 1000);
        int ticks = 0;
        const auto done = [&ticks] { return ticks == 4; };
        connect(&timer, &Timer::Tick, this, [&] {
            if (++ticks == 1) QCOMPARE(bench.Wait.Until(done), Waiting::End::Done);
        });
        timer.SetEnabled(true);
        const qint64 start = bench.Time.Milliseconds();
        QVERIFY(bench.Time.RunUntil(done));
        QCOMPARE(bench.Time.Milliseconds() - start, 4000);
    }

    void CloseEndsNestedWaits() {
        Bench bench;
        const QSignalSpy idle(&bench.Wait, &Waiting::Idle);
        Timer inner(bench.Time, 1000);
        Timer closer(bench.Time, 2500);
        auto innerEnd = Waiting::End::Done;
        connect(&inner, &Timer::Tick, this, [&] {
            inner.SetEnabled(false);
            innerEnd = bench.Wait.Until(Never);
            QCOMPARE(idle.size(), 0);
        });
        connect(&closer, &Timer::Tick, this, [&] { bench.Wait.Close(); });
        inner.SetEnabled(true);
        closer.SetEnabled(true);
        QCOMPARE(bench.Wait.Until(Never), Waiting::End::Closing);
        QCOMPARE(innerEnd, Waiting::End::Closing);
        QCOMPARE(idle.size(), 1);
    }

    void AMachineThatWakesUpIsNotLate() {
        // Suspended: it is later than before, and nothing else has happened.
        class Machine : public SystemClock {
          public:
            using SystemClock::SystemClock;
            qint64 Slept = 0;
            [[nodiscard]] qint64 Milliseconds() const override {
                return SystemClock::Milliseconds() + Slept;
            }
        } clock(10);
        Timer timer(clock, 600'000);
        const Ticks ticks(clock, timer);
        timer.SetEnabled(true);
        clock.Slept = 3'600'000;
        QTRY_COMPARE(ticks.Times.size(), 1);
    }

    void SleepingWaitsWakeUp() {
        SystemClock clock;
        Waiting waiting(clock);
        QElapsedTimer real;
        real.start();
        QCOMPARE(waiting.Until(Never, {.LimitMilliseconds = 30}), Waiting::End::Limit);
        QVERIFY(real.elapsed() >= 29);
        // Closed behind the last look at it: without an event of its own nobody would notice.
        const auto close = [&waiting] {
            waiting.Close();
            return false;
        };
        const auto end = waiting.Until(Never, {.LimitMilliseconds = 5'000, .Hopeless = close});
        QCOMPARE(end, Waiting::End::Closing);
        QVERIFY(real.elapsed() < 2'500);
    }

    void WhatIsToBeDeletedOutlivesNoWait() {
        SystemClock clock;
        Waiting waiting(clock);
        Timer timer(clock, 1);
        QEventLoop loop;
        QPointer object = new QObject;
        int ticks = 0;
        connect(&timer, &Timer::Tick, this, [&] {
            constexpr int patience = 500;  // Windows has other events first
            if (!object || ++ticks == patience) loop.quit();
            if (!object || ticks > 1) return;
            object->deleteLater();
            QCOMPARE(waiting.Until(Never, {.LimitMilliseconds = 1}), Waiting::End::Limit);
        });
        timer.SetEnabled(true);
        loop.exec();
        QVERIFY(!object);
    }
};

QTEST_GUILESS_MAIN(TestClockWaiting)
#include "test_clock_waiting.moc"
