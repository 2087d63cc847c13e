#include "base/clock.h"
#include "base/waiting.h"
#include "support/test_clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <memory>

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

}  // namespace

class TestClockWaiting : public QObject {
    Q_OBJECT

  private slots:
    void TimerTicks();
    void MissedTicksAreNotMadeUpFor();
    void TimerIsSetAnewAndSwitched();
    void TimerTicksWhileItsHandlerWaits();
    void HandlersMayDeleteTimers();
    void SystemClockWakesUp();

    void Ends_data();
    void Ends();
    void ConditionThatHoldsCostsNothing();
    void LimitTakesItsTime();
    void PassesOnceASecond();
    void CloseEndsNestedWaits();
    void CloseWakesASleepingWait();
};

void TestClockWaiting::TimerTicks() {
    HandClock clock;
    Timer timer(clock, 100);
    const Ticks ticks(clock, timer);
    clock.MoveTo(1000);
    QVERIFY(ticks.Times.isEmpty());
    timer.SetEnabled(true);
    for (const qint64 time : {1099, 1100, 1199, 1230, 1299, 1300}) clock.MoveTo(time);
    // The one that came late at 1230 does not shift the next.
    QCOMPARE(ticks.Times, (QList<qint64>{1100, 1230, 1300}));
}

void TestClockWaiting::MissedTicksAreNotMadeUpFor() {
    HandClock clock;
    Timer timer(clock, 100);
    const Ticks ticks(clock, timer);
    timer.SetEnabled(true);
    clock.MoveTo(3'600'050);
    clock.MoveTo(3'600'149);
    clock.MoveTo(3'600'150);
    QCOMPARE(ticks.Times, (QList<qint64>{3'600'050, 3'600'150}));
}

void TestClockWaiting::TimerIsSetAnewAndSwitched() {
    HandClock clock;
    Timer timer(clock, 100);
    const Ticks ticks(clock, timer);
    timer.SetEnabled(true);
    clock.MoveTo(50);
    timer.SetEnabled(true);  // no new start
    clock.MoveTo(100);
    clock.MoveTo(150);
    timer.SetInterval(80);  // starts anew
    clock.MoveTo(200);
    clock.MoveTo(230);
    timer.SetEnabled(false);
    clock.MoveTo(1000);
    timer.SetEnabled(true);
    clock.MoveTo(1079);
    clock.MoveTo(1080);
    QCOMPARE(ticks.Times, (QList<qint64>{100, 230, 1080}));
    timer.SetInterval(0);
    QCOMPARE(timer.Interval(), 1);
}

void TestClockWaiting::TimerTicksWhileItsHandlerWaits() {
    TestClock clock;
    Waiting waiting(clock);
    Timer timer(clock, 1000);
    int ticks = 0;
    connect(&timer, &Timer::Tick, this, [&] {
        if (++ticks == 1) QVERIFY(waiting.Until([&] { return ticks == 4; }) == Waiting::End::Done);
    });
    timer.SetEnabled(true);
    const qint64 start = clock.Milliseconds();
    QVERIFY(clock.RunUntil([&] { return ticks == 4; }));
    QCOMPARE(clock.Milliseconds() - start, 4000);
}

void TestClockWaiting::HandlersMayDeleteTimers() {
    HandClock clock;
    auto own = std::make_unique<Timer>(clock, 10);
    auto other = std::make_unique<Timer>(clock, 10);
    int ticks = 0;
    connect(own.get(), &Timer::Tick, this, [&] {
        ++ticks;
        other.reset();
        own.reset();
    });
    connect(other.get(), &Timer::Tick, this, [&] { ticks += 100; });
    own->SetEnabled(true);
    other->SetEnabled(true);
    clock.MoveTo(10);
    clock.MoveTo(20);
    QCOMPARE(ticks, 1);
}

void TestClockWaiting::SystemClockWakesUp() {
    SystemClock clock;
    Waiting waiting(clock);
    QElapsedTimer real;
    real.start();
    const auto end = waiting.Until([] { return false; }, {.LimitMilliseconds = 30});
    QVERIFY(end == Waiting::End::Limit);
    QVERIFY(real.elapsed() >= 29);
}

void TestClockWaiting::Ends_data() {
    QTest::addColumn<bool>("done");
    QTest::addColumn<bool>("closing");
    QTest::addColumn<bool>("hopeless");
    QTest::addColumn<int>("limit");  // milliseconds
    QTest::addColumn<int>("end");

    using enum Waiting::End;
    const auto row = [](const char* name, bool done, bool closing, bool hopeless, int limit,
                        Waiting::End end) {
        QTest::addRow("%s", name) << done << closing << hopeless << limit << static_cast<int>(end);
    };
    row("done", true, false, false, 100, Done);
    row("done, though all is lost", true, true, true, 0, Done);
    row("the program closes", false, true, true, 0, Closing);
    row("limit", false, false, false, 100, Limit);
    row("limit of nothing", false, false, false, 0, Limit);
    row("hopeless", false, false, true, 100, Hopeless);
}

void TestClockWaiting::Ends() {
    QFETCH(bool, done);
    QFETCH(bool, closing);
    QFETCH(bool, hopeless);
    QFETCH(int, limit);
    TestClock clock;
    Waiting waiting(clock);
    if (closing) waiting.Close();
    const auto end = waiting.Until(
        [&] { return done; }, {.LimitMilliseconds = limit, .Hopeless = [&] { return hopeless; }});
    QTEST(static_cast<int>(end), "end");
    QCOMPARE(waiting.Depth(), 0);
    QCOMPARE(waiting.Seconds(1), !closing);
}

void TestClockWaiting::ConditionThatHoldsCostsNothing() {
    TestClock clock;
    Waiting waiting(clock);
    bool handled = false;
    QMetaObject::invokeMethod(
        this, [&] { handled = true; }, Qt::QueuedConnection);
    QVERIFY(waiting.Until([] { return true; }) == Waiting::End::Done);
    QVERIFY(!handled);
    waiting.Yield();
    QVERIFY(handled);
}

void TestClockWaiting::LimitTakesItsTime() {
    TestClock clock;
    Waiting waiting(clock);
    const qint64 start = clock.Milliseconds();
    QVERIFY(waiting.Until([] { return false; }, {.LimitMilliseconds = 45'000}) ==
            Waiting::End::Limit);
    QCOMPARE(clock.Milliseconds() - start, 45'000);
    QVERIFY(waiting.Seconds(7));
    QCOMPARE(clock.Milliseconds() - start, 52'000);
}

void TestClockWaiting::PassesOnceASecond() {
    TestClock clock;
    Waiting waiting(clock);
    QList<qint64> seconds;
    (void)waiting.Until([] { return false; },
                        {.LimitMilliseconds = 3000, .EveryPass = [&](qint64 elapsed) {
                             if (seconds.isEmpty() || seconds.last() != elapsed / 1000)
                                 seconds << elapsed / 1000;
                         }});
    QCOMPARE(seconds, (QList<qint64>{0, 1, 2, 3}));
}

void TestClockWaiting::CloseEndsNestedWaits() {
    TestClock clock;
    Waiting waiting(clock);
    int idle = 0;
    int deepest = 0;
    connect(&waiting, &Waiting::Idle, this, [&] { ++idle; });
    Timer inner(clock, 1000);
    Timer closer(clock, 2500);
    Waiting::End innerEnd = Waiting::End::Done;
    connect(&inner, &Timer::Tick, this, [&] {
        inner.SetEnabled(false);
        innerEnd = waiting.Until([] { return false; });
        QCOMPARE(waiting.Depth(), 1);
        QCOMPARE(idle, 0);
    });
    connect(&closer, &Timer::Tick, this, [&] {
        deepest = waiting.Depth();
        waiting.Close();
    });
    inner.SetEnabled(true);
    closer.SetEnabled(true);
    QVERIFY(waiting.Until([] { return false; }) == Waiting::End::Closing);
    QVERIFY(innerEnd == Waiting::End::Closing);
    QCOMPARE(deepest, 2);
    QCOMPARE(idle, 1);
    QVERIFY(waiting.Closing());
}

void TestClockWaiting::CloseWakesASleepingWait() {
    SystemClock clock;
    Waiting waiting(clock);
    // Closed behind the last look at it: without an event of its own nobody would notice.
    QElapsedTimer real;
    real.start();
    const auto end =
        waiting.Until([] { return false; }, {.LimitMilliseconds = 5'000, .Hopeless = [&waiting] {
                                                 waiting.Close();
                                                 return false;
                                             }});
    QVERIFY(end == Waiting::End::Closing);
    QVERIFY(real.elapsed() < 2'500);
}

QTEST_GUILESS_MAIN(TestClockWaiting)
#include "test_clock_waiting.moc"
