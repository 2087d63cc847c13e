#include "base/waiting.h"
#include "net/connectivity.h"
#include "net/page_control.h"
#include "support/data_rows.h"
#include "support/recording_display.h"
#include "support/test_clock.h"
#include "support/test_platform.h"

using Links = OnlineState::Links;

namespace {

// Writes down the requests: "page" or "refresh". OnRequest runs with the number of each, from 1.
class RecordingPage : public PageControl {
  public:
    QStringList Requests;
    std::function<void(qsizetype)> OnRequest = [](qsizetype) {};

    void Request(bool refresh) override {
        Requests << (refresh ? QString("refresh") : QString("page"));
        OnRequest(Requests.size());
    }
};

const QString offline = QStringLiteral("No Connection to Internet");

}  // namespace

class TestConnectivity : public QObject {
    Q_OBJECT

  private slots:
    void init() { bench = std::make_unique<Bench>(); }

    void staysOffline() {
        bench->Display.Online = true;
        QCOMPARE(bench->Check(), 9 * 7 + 1.0);
        QVERIFY(!bench->Answer);
        QCOMPARE(bench->Display.Statuses.last(), "connect to internet try: 9");
        QVERIFY(!bench->Display.Online);
        QCOMPARE(bench->Page.Requests.size(), 2 * 9 * 2);
        QCOMPARE(bench->Page.Requests.mid(0, 3), QStringList({"page", "refresh", "page"}));
        QCOMPARE(bench->State.Forced, 9);
    }

    void comesOnlineBetweenTries_data() {
        const Rows<int, Links, double, int> row;
        // The kind ends the tries at the next one; without it they run out, but wait no longer.
        row("during the second try", 5, OnlineState::Modem, 15.0, 3);
        row("kind is never told", 5, {}, 15.0, 9);
    }
    void comesOnlineBetweenTries() {
        const auto [request, links, seconds, tries] = Row<int, Links, double, int>();
        bench->Page.OnRequest = [&](qsizetype number) {
            if (number == request) bench->State.Set(true, links);
        };
        QCOMPARE(bench->Check(), seconds);
        QVERIFY(bench->Answer);
        QCOMPARE(bench->Display.Statuses.filter("connect to internet try: ").size(), tries);
    }

    void abortEndsTries_data() {
        const Rows<int, bool, int> row;
        row("stop in the third try", 15500, false, 10);
        row("program closes", 2500, true, 2);
    }
    void abortEndsTries() {
        const auto [milliseconds, closing, requests] = Row<int, bool, int>();
        bench->After(milliseconds, [&] {
            if (closing) bench->Wait.Close();
            bench->Net.SetStopped(!closing);
        });
        QCOMPARE(bench->Check(), milliseconds / 1000.0);
        QVERIFY(!bench->Answer);
        QCOMPARE(static_cast<int>(bench->Page.Requests.size()), requests);
    }

    void neitherDialsNorTriesWhileStopped() {
        bench->Net.SetStopped(true);
        for (const bool dials : {false, true}) {
            bench->Net.SetDialling(dials, "Stick");
            QCOMPARE(bench->Check(), 0.0);
            QVERIFY(!bench->Answer);
        }
        QCOMPARE(bench->Page.Requests + bench->Dial.Dialled, QStringList());
    }

    void dials_data() {
        const Rows<int, double, int> row;
        row("stands after four seconds", 4000, 5.0, 1);
        row("fails", -1, 11.0, 0);
    }
    void dials() {
        const auto [answerAfter, seconds, handle] = Row<int, double, int>();
        bench->Net.SetDialling(true, "Stick");
        bench->Dial.Answers = false;
        if (answerAfter > 0) bench->After(answerAfter, [this] { bench->Dial.Answer(); });
        QCOMPARE(bench->Check(), seconds);
        // The answer is the one from before the dial; the next question sees the line.
        QVERIFY(!bench->Answer);
        QCOMPARE(bench->Net.DialConnection(), handle);
        QCOMPARE(bench->Dial.Dialled, QStringList{"Stick"});
        QCOMPARE(bench->Display.Statuses, QStringList({offline, "Connecting to Stick"}));
        QCOMPARE(bench->Page.Requests, QStringList());
    }

    void hangsUpWhatItDialled() {
        bench->Net.SetDialling(true, "Stick");
        bench->Dial.Answers = false;
        bench->Net.DialConfigured();
        bench->Dial.Answer();  // late
        bench->Net.DialConfigured();
        QCOMPARE(bench->Dial.HungUp, QList<int>());  // the dialler keeps a line that stands
        bench->Dial.Answers = true;
        bench->Net.SetDialling(true, "Spare");
        bench->Net.DialConfigured();
        QCOMPARE(bench->Dial.HungUp, QList<int>{1});
        QCOMPARE(bench->Net.DialConnection(), 2);
        bench->Display.Online = true;
        bench->Net.HangUp();
        bench->Net.HangUp();
        QCOMPARE(bench->Dial.HungUp, QList<int>({1, 2}));
        QVERIFY(bench->Net.DialConnection() == 0 && !bench->Display.Online);
        bench->Dial.Answers = false;
        bench->Net.DialConfigured();
        bench->Net.HangUp();
        QVERIFY2(bench->Dial.HungUp.contains(3), "also while it is still dialled");
    }

    void localServerNeedsNoNetwork() {
        const QStringList local{"Local", "LOCALHOST",   "127.255.255.254",
                                "::1",   " localhost ", "http://127.0.0.1:9000"};
        const QStringList far{"LOCAL", "128.0.0.1", "127.0.0.1.example.org", ""};
        for (const QString& server : local + far) {
            bench->Net.SetServer(server);
            QVERIFY2(bench->Net.Online() == local.contains(server), qPrintable(server));
        }
    }

    void anyNetworkWillDoUnlessAnEntryIsToBeDialled() {
        bench->State.Near = true;
        QCOMPARE(bench->Check(), 0.0);
        QVERIFY(bench->Answer);
        bench->Net.SetDialling(true, "Stick");
        QVERIFY(!bench->Net.Online());
    }

  private:
    // Everything that one check needs, started and offline.
    struct Bench {
        TestClock Time;
        Waiting Wait{Time};
        TestOnlineState State;
        TestDialer Dial;
        RecordingDisplay Display;
        RecordingPage Page;
        Connectivity Net{Wait, State, Dial, Display, Page};

        Bench() {
            Dial.EntryList = {"Stick", "Spare"};
            Net.SetStopped(false);
        }

        // Clock seconds that the check takes.
        bool Answer = false;
        double Check() {
            const qint64 start = Time.Milliseconds();
            Answer = Net.IstNetzVerbindung();
            return static_cast<double>(Time.Milliseconds() - start) / 1000;
        }
        // Does something once `milliseconds` of clock time have passed.
        void After(int milliseconds, const std::function<void()>& act) {
            later = std::make_unique<Timer>(Time, milliseconds);
            later->SetEnabled(true);
            QObject::connect(later.get(), &Timer::Tick, later.get(), [this, act] {
                later->SetEnabled(false);
                act();
            });
        }
        std::unique_ptr<Timer> later;
    };
    std::unique_ptr<Bench> bench;
};

QTEST_GUILESS_MAIN(TestConnectivity)
#include "test_connectivity.moc"
