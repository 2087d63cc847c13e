#include "net/connectivity.h"
#include "support/data_rows.h"
#include "support/recording_display.h"
#include "support/test_clock.h"
#include "support/test_platform.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

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

QStringList Tries(int first, int last) {
    QStringList texts;
    for (int i = first; i <= last; ++i) texts << QString("connect to internet try: %1").arg(i);
    return texts;
}

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
        QCOMPARE(bench->Display.Statuses, QStringList{offline} + Tries(1, 9));
        QVERIFY(!bench->Display.Online);
        QStringList requests;
        for (int i = 0; i < 2 * 9; ++i) requests += QStringList{"page", "refresh"};
        QCOMPARE(bench->Page.Requests, requests);
        QCOMPARE(bench->State.Forced, 9);
    }

    void knownKindCountsAsOnline_data() {
        const Rows<Links, QString> row;
        const Links proxy = OnlineState::Proxy;
        const Links both = proxy | OnlineState::Modem;
        row("proxy", proxy, "proxy");
        row("modem before proxy", both, "modem");
        row("lan before all", both | OnlineState::Lan, "lan");
    }
    void knownKindCountsAsOnline() {
        const auto [links, type] = Row<Links, QString>();
        bench->State.Set(false, links);
        QCOMPARE(bench->Check(), 1.0);
        QVERIFY(bench->Answer);
        QCOMPARE(bench->Display.Statuses,
                 QStringList({offline, "connect to internet try: 1",
                              "Connected via " + type + ". please wait..."}));
        QCOMPARE(bench->Page.Requests, QStringList());
        QCOMPARE(bench->State.Forced, 0);
    }

    void comesOnlineBetweenTries_data() {
        const Rows<int, Links, double, int, QString> row;
        // The kind ends the tries at the next one; without it they run out, but wait no longer.
        row("during the second try", 5, OnlineState::Modem, 15.0, 3, "modem");
        row("kind is never told", 5, {}, 15.0, 9, "");
        row("during the last try", 36, OnlineState::Lan, 64.0, 9, "lan");
    }
    void comesOnlineBetweenTries() {
        const auto [request, links, seconds, lastTry, type] =
            Row<int, Links, double, int, QString>();
        bench->Page.OnRequest = [&](qsizetype number) {
            if (number == request) bench->State.Set(true, links);
        };
        QCOMPARE(bench->Check(), seconds);
        QVERIFY(bench->Answer);
        QCOMPARE(bench->Display.Statuses,
                 QStringList{offline} + Tries(1, lastTry) +
                     QStringList{"Connected via " + type + ". please wait..."});
    }

    void abortEndsTries_data() {
        const Rows<int, bool, int> row;
        row("stop in the first wait", 2500, false, 2);
        row("stop in the last wait of a try", 6500, false, 4);
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

    void neitherDialsNorTries_data() {
        const Rows<bool> row;
        row("stopped", false);
        row("program closed", true);
    }
    void neitherDialsNorTries() {
        const auto [closed] = Row<bool>();
        Connectivity fresh(bench->Wait, bench->State, bench->Dial, bench->Display, bench->Page);
        if (closed) bench->Wait.Close();
        fresh.SetStopped(!closed);
        for (const bool dials : {false, true}) {
            fresh.SetDialling(dials, "Stick");
            const qint64 start = bench->Time.Milliseconds();
            QVERIFY(!fresh.IstNetzVerbindung());
            QCOMPARE(bench->Time.Milliseconds(), start);
        }
        QCOMPARE(bench->Display.Statuses, QStringList({offline, offline}));
        QCOMPARE(bench->Page.Requests + bench->Dial.Dialled, QStringList());
        // Stopped or not, a standing connection is told.
        bench->State.Set(true);
        QVERIFY(fresh.IstNetzVerbindung());
    }

    void nestedCallAnswersFromPresentState() {
        QList<bool> answers;
        bench->After(1500, [&] {
            answers << bench->Net.IstNetzVerbindung();
            bench->State.Set(true, OnlineState::Lan);
            answers << bench->Net.IstNetzVerbindung();
        });
        QCOMPARE(bench->Check(), 8.0);
        QCOMPARE(answers, QList<bool>({false, true}));
        QCOMPARE(bench->Display.Statuses.filter("try").size(), 2);
        // The call that waited is over: the next one tries again.
        bench->State.Set(false);
        QCOMPARE(bench->Check(), 64.0);
    }

    void dials_data() {
        const Rows<int, double, int> row;
        row("stands at once", 0, 1.0, 1);
        row("stands after four seconds", 4000, 5.0, 1);
        row("fails", -1, 11.0, 0);
    }
    void dials() {
        const auto [answerAfter, seconds, handle] = Row<int, double, int>();
        bench->Net.SetDialling(true, "Stick");
        bench->Dial.Answers = answerAfter == 0;
        if (answerAfter > 0) bench->After(answerAfter, [this] { bench->Dial.Answer(); });
        QVERIFY(!bench->Net.Dialled());
        QCOMPARE(bench->Check(), seconds);
        // The answer is the one from before the dial; the next question sees the line.
        QVERIFY(!bench->Answer);
        QVERIFY(bench->Net.Dialled());
        QCOMPARE(bench->Net.DialConnection(), handle);
        QCOMPARE(bench->Dial.Dialled, QStringList{"Stick"});
        QCOMPARE(bench->Display.Statuses, QStringList({offline, "Connecting to Stick"}));
        QCOMPARE(bench->Page.Requests, QStringList());
    }

    void lateDialCanBeHungUp() {
        bench->Net.SetDialling(true, "Stick");
        bench->Dial.Answers = false;
        bench->Net.DialConfigured();
        bench->Net.HangUp();
        QCOMPARE(bench->Dial.HungUp, QList<int>());
        bench->Dial.Answer();
        QCOMPARE(bench->Net.DialConnection(), 1);
        bench->Display.Online = true;
        bench->Net.HangUp();
        bench->Net.HangUp();
        QCOMPARE(bench->Dial.HungUp, QList<int>{1});
        QVERIFY(bench->Net.DialConnection() == 0 && !bench->Display.Online);
    }

    void changedEntryHangsFormerOneUp() {
        for (const QString& entry : QStringList{"Stick", "Stick", "Spare"}) {
            // The dialler itself keeps a line that stands.
            QCOMPARE(bench->Dial.HungUp, QList<int>());
            bench->Net.SetDialling(true, entry);
            bench->Net.DialConfigured();
        }
        QCOMPARE(bench->Dial.HungUp, QList<int>{1});
        QCOMPARE(bench->Net.DialConnection(), 2);
    }

    void nestedCheckDoesNotUndoStop() {
        bench->Net.SetDialling(true, "Stick");
        bench->Dial.Answers = false;
        bench->After(1500, [this] {
            bench->Net.SetStopped(true);
            QVERIFY(!bench->Net.IstNetzVerbindung());
        });
        const qint64 start = bench->Time.Milliseconds();
        bench->Net.DialConfigured();
        QCOMPARE(bench->Time.Milliseconds() - start, 1500);
        bench->Net.SetStopped(false);
        QCOMPARE(bench->Check(), 11.0);
    }

    void localServerNeedsNoNetwork_data() {
        Rows<QString, bool>({{"Local", true},
                             {"LOCAL", false},
                             {"LOCALHOST", true},
                             {"127.255.255.254", true},
                             {"::1", true},
                             {" localhost ", true},
                             {"128.0.0.1", false},
                             {"127.0.0.1.example.org", false},
                             {"", false}});
    }
    void localServerNeedsNoNetwork() {
        const auto [server, online] = Row<QString, bool>();
        bench->Net.SetServer(server);
        QCOMPARE(bench->Net.Online(), online);
        QCOMPARE(bench->Check(), online ? 0.0 : 64.0);
        QCOMPARE(bench->Answer, online);
        // The settings may name another server later.
        bench->Net.SetServer("ftp.example.org");
        QVERIFY(!bench->Net.Online());
    }

    void onlineShowsChanges() {
        bench->State.Set(true);
        QCOMPARE(bench->Check(), 0.0);
        QCOMPARE(bench->Display.Statuses, QStringList());
        QVERIFY(bench->Answer && bench->Display.Online);
        bench->Display.Online = false;  // somebody else's word stays until the state changes
        QVERIFY(bench->Net.Online() && !bench->Display.Online);
        bench->State.Set(false);
        QVERIFY(!bench->Net.Online());
        bench->State.Set(true);
        QVERIFY(bench->Net.Online() && bench->Display.Online);

        bench->Display.Shown = false;
        bench->Display.Online = false;
        QVERIFY(bench->Net.IstNetzVerbindung() && bench->Net.Online());
        QVERIFY(!bench->Display.Online);
        bench->State.Set(false);
        QCOMPARE(bench->Check(), 64.0);
        QVERIFY(!bench->Display.Statuses.contains(offline));
        // A window that is opened now gets the state although it has not changed.
        bench->State.Set(true);
        QVERIFY(bench->Net.Online());
        bench->Display.Shown = true;
        QVERIFY(bench->Net.Online() && bench->Display.Online);
        QCOMPARE(bench->Dial.Dialled, QStringList());
    }

    void pageIsRequestedAfresh() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QList<QTcpSocket*> clients;
        QByteArrayList heads;
        int gone = 0;
        connect(&server, &QTcpServer::newConnection, &server, [&] {
            QTcpSocket* const client = server.nextPendingConnection();
            clients << client;
            connect(client, &QTcpSocket::readyRead, client,
                    [&, client] { heads << client->readAll(); });
            connect(client, &QTcpSocket::disconnected, client, [&gone] { ++gone; });
        });
        PageControl page(QUrl(QString("http://127.0.0.1:%1/").arg(server.serverPort())));
        page.Request(false);
        QTRY_COMPARE(heads.size(), 1);
        QVERIFY(heads[0].startsWith("GET / HTTP/1.1\r\n"));
        QVERIFY(heads[0].toLower().contains("cache-control: no-cache"));
        // The server is slow; the next request does not wait for it.
        page.Request(false);
        QTRY_COMPARE(heads.size(), 2);
        QTRY_COMPARE(gone, 1);
        // An answer without end is not read to its end.
        clients[1]->write("HTTP/1.1 200 OK\r\nCache-Control: max-age=9999\r\n\r\nwelcome");
        QTRY_COMPARE(gone, 2);
        page.Request(true);
        QTRY_COMPARE(heads.size(), 3);
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
