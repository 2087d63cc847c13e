#include "net/connectivity.h"
#include "platform/test/test_platform.h"
#include "support/recording_display.h"
#include "support/test_clock.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

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
    void init();

    void onlineAnswersAtOnce();
    void staysOffline();
    void knownKindCountsAsOnline_data();
    void knownKindCountsAsOnline();
    void comesOnlineBetweenTries_data();
    void comesOnlineBetweenTries();
    void abortEndsTries_data();
    void abortEndsTries();
    void closedProgramTriesNothing();
    void stoppedNeitherDialsNorTries();
    void nestedCallAnswersFromPresentState();

    void dials_data();
    void dials();
    void abortEndsDial();
    void lateDialCanBeHungUp();
    void changedEntryHangsFormerOneUp();
    void nestedCheckDoesNotUndoStop();

    void localServerNeedsNoNetwork_data();
    void localServerNeedsNoNetwork();
    void onlineShowsChanges();
    void pageIsRequestedAfresh();

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

        Bench() { Net.SetStopped(false); }

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

void TestConnectivity::init() {
    bench = std::make_unique<Bench>();
}

void TestConnectivity::onlineAnswersAtOnce() {
    bench->State.Set(true, OnlineState::Lan);
    QCOMPARE(bench->Check(), 0.0);
    QVERIFY(bench->Answer);
    QCOMPARE(bench->Display.Statuses, QStringList());
    QVERIFY(bench->Display.Online);
}

void TestConnectivity::staysOffline() {
    bench->Display.Online = true;
    QCOMPARE(bench->Check(), 9 * 7 + 1.0);
    QVERIFY(!bench->Answer);
    QCOMPARE(bench->Display.Statuses, QStringList{offline} + Tries(1, 9));
    QVERIFY(!bench->Display.Online);
    QStringList requests;
    for (int i = 0; i < 2 * 9; ++i)
        requests << "page"
                 << "refresh";
    QCOMPARE(bench->Page.Requests, requests);
    QCOMPARE(bench->State.Forced, 9);
}

void TestConnectivity::knownKindCountsAsOnline_data() {
    QTest::addColumn<Links>("links");
    QTest::addColumn<QString>("type");
    const Links proxy = OnlineState::Proxy;
    const Links modem = OnlineState::Modem;
    const Links lan = OnlineState::Lan;
    QTest::addRow("proxy") << proxy << "proxy";
    QTest::addRow("modem") << modem << "modem";
    QTest::addRow("lan") << lan << "lan";
    QTest::addRow("modem before proxy") << (proxy | modem) << "modem";
    QTest::addRow("lan before all") << (proxy | modem | lan) << "lan";
}

void TestConnectivity::knownKindCountsAsOnline() {
    QFETCH(const Links, links);
    QFETCH(const QString, type);
    bench->State.Set(false, links);
    QCOMPARE(bench->Check(), 1.0);
    QVERIFY(bench->Answer);
    QCOMPARE(bench->Display.Statuses, QStringList({offline, "connect to internet try: 1",
                                                   "Connected via " + type + ". please wait..."}));
    QCOMPARE(bench->Page.Requests, QStringList());
    QCOMPARE(bench->State.Forced, 0);
}

void TestConnectivity::comesOnlineBetweenTries_data() {
    QTest::addColumn<int>("request");
    QTest::addColumn<Links>("links");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("lastTry");
    QTest::addColumn<QString>("type");
    // The kind ends the tries at the next one; without it they run out, but wait no longer.
    QTest::addRow("during the second try")
        << 5 << Links(OnlineState::Modem) << 15.0 << 3 << "modem";
    QTest::addRow("kind is never told") << 5 << Links() << 15.0 << 9 << "";
    QTest::addRow("during the last try") << 36 << Links(OnlineState::Lan) << 64.0 << 9 << "lan";
}

void TestConnectivity::comesOnlineBetweenTries() {
    QFETCH(const int, request);
    QFETCH(const Links, links);
    bench->Page.OnRequest = [&](qsizetype number) {
        if (number == request) bench->State.Set(true, links);
    };
    QTEST(bench->Check(), "seconds");
    QVERIFY(bench->Answer);
    QFETCH(const int, lastTry);
    QFETCH(const QString, type);
    QCOMPARE(bench->Display.Statuses,
             QStringList{offline} + Tries(1, lastTry) +
                 QStringList{"Connected via " + type + ". please wait..."});
}

void TestConnectivity::abortEndsTries_data() {
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("closing");
    QTest::addColumn<int>("requests");
    QTest::addRow("stop in the first wait") << 2500 << false << 2;
    QTest::addRow("stop in the second wait") << 4500 << false << 4;
    QTest::addRow("stop in the last wait of a try") << 6500 << false << 4;
    QTest::addRow("stop in the third try") << 15500 << false << 10;
    QTest::addRow("program closes") << 2500 << true << 2;
}

void TestConnectivity::abortEndsTries() {
    QFETCH(const int, milliseconds);
    QFETCH(const bool, closing);
    bench->After(milliseconds, [&] {
        if (closing) {
            bench->Wait.Close();
        } else {
            bench->Net.SetStopped(true);
        }
    });
    QCOMPARE(bench->Check(), milliseconds / 1000.0);
    QVERIFY(!bench->Answer);
    QTEST(static_cast<int>(bench->Page.Requests.size()), "requests");
}

void TestConnectivity::closedProgramTriesNothing() {
    bench->Wait.Close();
    QCOMPARE(bench->Check(), 0.0);
    QVERIFY(!bench->Answer);
    bench->Net.SetDialling(true, "Stick");
    QCOMPARE(bench->Check(), 0.0);
    QCOMPARE(bench->Display.Statuses, QStringList({offline, offline}));
    QCOMPARE(bench->Page.Requests + bench->Dial.Dialled, QStringList());
}

void TestConnectivity::stoppedNeitherDialsNorTries() {
    Connectivity fresh(bench->Wait, bench->State, bench->Dial, bench->Display, bench->Page);
    bench->State.Set(false, OnlineState::Lan);
    QVERIFY(!fresh.IstNetzVerbindung());
    fresh.SetDialling(true, "Stick");
    QVERIFY(!fresh.IstNetzVerbindung());
    QCOMPARE(bench->Display.Statuses, QStringList({offline, offline}));
    QCOMPARE(bench->Page.Requests + bench->Dial.Dialled, QStringList());
    // Stopped or not, a standing connection is told.
    bench->State.Set(true);
    QVERIFY(fresh.IstNetzVerbindung());
}

void TestConnectivity::nestedCallAnswersFromPresentState() {
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

void TestConnectivity::dials_data() {
    QTest::addColumn<int>("answerAfter");  // milliseconds; 0: at once, -1: never
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("handle");
    QTest::addRow("stands at once") << 0 << 1.0 << 1;
    QTest::addRow("stands after four seconds") << 4000 << 5.0 << 1;
    QTest::addRow("fails") << -1 << 11.0 << 0;
}

void TestConnectivity::dials() {
    QFETCH(const int, answerAfter);
    bench->Net.SetDialling(true, "Stick");
    bench->Dial.Answers = answerAfter == 0;
    if (answerAfter > 0) bench->After(answerAfter, [this] { bench->Dial.Answer(); });
    QVERIFY(!bench->Net.Dialled());
    QTEST(bench->Check(), "seconds");
    // The answer is the one from before the dial; the next question sees the line.
    QVERIFY(!bench->Answer);
    QVERIFY(bench->Net.Dialled());
    QTEST(bench->Net.DialConnection(), "handle");
    QCOMPARE(bench->Dial.Dialled, QStringList{"Stick"});
    QCOMPARE(bench->Display.Statuses, QStringList({offline, "Connecting to Stick"}));
    QCOMPARE(bench->Page.Requests, QStringList());
}

void TestConnectivity::abortEndsDial() {
    bench->Net.SetDialling(true, "Stick");
    bench->Dial.Answers = false;
    bench->After(3500, [this] { bench->Net.SetStopped(true); });
    QCOMPARE(bench->Check(), 3.5);
    bench->Net.SetStopped(false);
    QCOMPARE(bench->Check(), 11.0);
}

void TestConnectivity::lateDialCanBeHungUp() {
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
    QCOMPARE(bench->Net.DialConnection(), 0);
    QVERIFY(!bench->Display.Online);
}

void TestConnectivity::changedEntryHangsFormerOneUp() {
    bench->Net.SetDialling(true, "Stick");
    bench->Net.DialConfigured();
    bench->Net.DialConfigured();  // the dialler itself keeps a line that stands
    QCOMPARE(bench->Dial.HungUp, QList<int>());
    bench->Net.SetDialling(true, "Spare");
    bench->Net.DialConfigured();
    QCOMPARE(bench->Dial.HungUp, QList<int>{2});
    QCOMPARE(bench->Net.DialConnection(), 3);
}

void TestConnectivity::nestedCheckDoesNotUndoStop() {
    bench->Net.SetDialling(true, "Stick");
    bench->Dial.Answers = false;
    bench->After(1500, [this] {
        bench->Net.SetStopped(true);
        QVERIFY(!bench->Net.IstNetzVerbindung());
    });
    const qint64 start = bench->Time.Milliseconds();
    bench->Net.DialConfigured();
    QCOMPARE(bench->Time.Milliseconds() - start, 1500);
}

void TestConnectivity::localServerNeedsNoNetwork_data() {
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("online");
    QTest::addRow("local mode") << "Local" << true;
    QTest::addRow("local mode, small") << "local" << true;
    QTest::addRow("local mode is not any case") << "LOCAL" << false;
    QTest::addRow("name") << "localhost" << true;
    QTest::addRow("name in capitals") << "LOCALHOST" << true;
    QTest::addRow("first address") << "127.0.0.1" << true;
    QTest::addRow("last address") << "127.255.255.254" << true;
    QTest::addRow("new protocol") << "::1" << true;
    QTest::addRow("typed blank") << " localhost " << true;
    QTest::addRow("neighbour") << "128.0.0.1" << false;
    QTest::addRow("name that begins alike") << "localhost.example.org" << false;
    QTest::addRow("address that begins alike") << "127.0.0.1.example.org" << false;
    QTest::addRow("none") << "" << false;
}

void TestConnectivity::localServerNeedsNoNetwork() {
    QFETCH(const QString, server);
    QFETCH(const bool, online);
    bench->Net.SetServer(server);
    QCOMPARE(bench->Net.Online(), online);
    QCOMPARE(bench->Check(), online ? 0.0 : 64.0);
    QCOMPARE(bench->Answer, online);
    // The settings may name another server later.
    bench->Net.SetServer("ftp.example.org");
    QVERIFY(!bench->Net.Online());
}

void TestConnectivity::onlineShowsChanges() {
    bench->State.Set(true);
    QVERIFY(bench->Net.Online());
    QVERIFY(bench->Display.Online);
    bench->Display.Online = false;  // somebody else's word stays until the state changes
    QVERIFY(bench->Net.Online());
    QVERIFY(!bench->Display.Online);
    bench->State.Set(false);
    QVERIFY(!bench->Net.Online());
    bench->State.Set(true);
    QVERIFY(bench->Net.Online());
    QVERIFY(bench->Display.Online);

    bench->Display.Shown = false;
    bench->Display.Online = false;
    QVERIFY(bench->Net.IstNetzVerbindung());
    QVERIFY(bench->Net.Online());
    QVERIFY(!bench->Display.Online);
    bench->State.Set(false);
    QCOMPARE(bench->Check(), 64.0);
    QVERIFY(!bench->Display.Statuses.contains(offline));
    // A window that is opened now gets the state although it has not changed.
    bench->State.Set(true);
    QVERIFY(bench->Net.Online());
    bench->Display.Shown = true;
    QVERIFY(bench->Net.Online());
    QVERIFY(bench->Display.Online);
    QCOMPARE(bench->Dial.Dialled, QStringList());
}

void TestConnectivity::pageIsRequestedAfresh() {
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

QTEST_GUILESS_MAIN(TestConnectivity)
#include "test_connectivity.moc"
