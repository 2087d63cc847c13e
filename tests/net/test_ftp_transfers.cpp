#include "net/ftp/ftp_passive.h"
#include "net/ftp/listing.h"
#include "net/ftp_bench.h"
#include "support/data_rows.h"
#include "support/dead_address.h"

#include <QTcpSocket>

using Script = QList<FtpFault>;
using enum ServerAnswer::Fault;

// Transfers against the scripted server: what is on the wire, and what happens when it is wrong.
class TestFtpTransfers : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        bench = std::make_unique<ScriptedFtpBench>();
        server = &bench->Server;
        QVERIFY(bench->Client.Connect());
        server->Commands.clear();
    }

    void Sends_data() {
        // A server may announce the transfer before it opens the connection.
        const Rows<int, bool, QList<int>> row;
        row("empty", 0, false, {0});
        row("block and final part", 5000, true, {4196, 5000});
        row("two whole blocks", 16392, false, {8196, 16393, 16392});
    }
    void Sends() {
        const auto [size, announced, steps] = Row<int, bool, QList<int>>();
        server->RepliesBeforeConnecting = announced;
        QSignalSpy progress(&bench->Client, &FTP::SendProgress);
        server->AnyFolder = true;
        QVERIFY(bench->Client.PutFile("a/b", "1pw.jpg", bench->Local(Content(size)), false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["a/b/1pw.jpg"] == Content(size));
        QList<int> sent;
        for (const auto& arguments : progress) sent << arguments[0].toInt();
        QCOMPARE(sent, steps);
        QCOMPARE(progress.last()[1].toInt(), size);
        QStringList exchange = server->Commands;
        QVERIFY(exchange.value(2).startsWith("PORT 127,0,0,1,"));
        exchange.removeAt(2);
        QCOMPARE(exchange, (QStringList{"CWD a/b", "TYPE I", "STOR 1pw.jpg"}));
        QCOMPARE(bench->Errors.count(), 0);
    }

    // An upload either ends in success with the file complete on the server, or in failure, and the
    // next one succeeds after a reconnect; no data element is left.
    void SendsInSpiteOf_data() {
        const Rows<FtpFault, bool, bool> row;  // sent; ends before the time limit
        row("PORT refused", Says("PORT", {"500 no\r\n"}), false, true);
        row("STOR late", {.Verb = "STOR", .DelayMilliseconds = 20'000}, true, false);
        row("STOR refused", Says("STOR", {"553 no\r\n"}), false, true);
        row("nobody connects", {.Verb = "STOR", .NoDataConnection = true}, false, false);
        row("closed in the middle", {.Verb = "STOR", .CloseControl = true}, false, true);
        row("nobody can connect",
            {.Verb = "STOR", .Chunks = {"150 x\r\n", "425 x\r\n"}, .NoDataConnection = true}, false,
            true);
        row("data closed early", {.Verb = "STOR", .DataBytes = 9000}, false, true);
        row("end missing", {.Verb = "DONE", .Silent = true}, true, true);
    }
    void SendsInSpiteOf() {
        const auto [fault, sent, soon] = Row<FtpFault, bool, bool>();
        server->Script = {fault};
        const QString local = bench->Local(Content(3'000'000));
        const qint64 start = bench->Clock.Milliseconds();
        QCOMPARE(bench->Client.PutFile({}, "a", local, false), sent);
        QVERIFY(!soon || bench->Clock.Milliseconds() - start < 30'000);
        if (sent)
            QVERIFY(
                bench->Clock.RunUntil([this] { return server->Files["a"].size() == 3'000'000; }));

        server->Script.clear();
        bench->Client.Cancel();
        bench->Client.Disconnect();
        QVERIFY(bench->Client.Connect());
        QVERIFY(bench->Client.PutFile({}, "a", local, false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["a"] == Content(3'000'000));
    }

    void ReachesServersByEveryAddress_data() {
        const Rows<QHostAddress, QString, QString> row;
        row("name", QHostAddress::LocalHost, "localhost", "PORT 127,0,0,1,");
        row("IPv4 in IPv6, passive", QHostAddress::LocalHost, "::ffff:127.0.0.1", "EPSV");
        row("IPv6, passive", QHostAddress::LocalHostIPv6, "[::1]", "EPSV");
        row("IPv4 in IPv6", QHostAddress::LocalHost, "::ffff:127.0.0.1", "PORT 127,0,0,1,");
        row("IPv6", QHostAddress::LocalHostIPv6, "[::1]", "EPRT |2|::1|");
    }
    void ReachesServersByEveryAddress() {
        const auto [address, host, announced] = Row<QHostAddress, QString, QString>();
        FtpBench patient(0, 100);  // names are looked up beside this thread
        ScriptedFtpServer other(patient.Clock, address);
        patient.Client.SetRemoteHost(host);
        patient.Client.SetRemotePort(other.Port());
        patient.Client.SetPassive(announced == "EPSV");
        QVERIFY(patient.Client.Connect());
        QVERIFY(patient.Client.PutFile({}, "a", patient.Local("x"), false));
        QVERIFY(patient.AwaitReply(226));
        QCOMPARE(other.Files["a"], QByteArray("x"));
        QCOMPARE(other.Commands.filter(announced).size(), 1);
    }

    void TriesOneAddressAfterTheOther_data() {
        const Rows<QStringList, int, int> row;
        row("refused, open", {"127.0.0.3", "127.0.0.1"}, Winsock::StateConnected, 0);
        row("dead, open", {"127.0.0.4", "127.0.0.1"}, Winsock::StateConnected, 5000);
        row("dead, refused", {"127.0.0.4", "127.0.0.3"}, Winsock::StateError, 5000);
    }
    void TriesOneAddressAfterTheOther() {
        const auto [texts, state, milliseconds] = Row<QStringList, int, int>();
        DeadAddress dead;
        QVERIFY(dead.Begin(server->Port()));
        QList<QHostAddress> addresses;
        for (const QString& text : texts) addresses << QHostAddress(text);
        Winsock element(bench->Clock);
        const qint64 start = bench->Clock.Milliseconds();
        element.Connect(addresses, server->Port());
        (void)bench->Clock.RunUntil([&] { return element.State() > Winsock::StateConnecting; });
        QCOMPARE(element.State(), state);
        QCOMPARE((bench->Clock.Milliseconds() - start) / 100 * 100, milliseconds);
        element.Connect(addresses, server->Port());
        element.Close();
        bench->Clock.Advance(10'000);
        QCOMPARE(element.State(), Winsock::StateClosed);
    }

    void SendsToTheServerAlone_data() {
        const Rows<bool, int> row;
        row("a stranger is first", false, 2);
        row("a server of two addresses", true, 1);
    }
    void SendsToTheServerAlone() {
        const auto [anywhere, connections] = Row<bool, int>();
        server->Script = {{.Verb = "STOR", .DataFrom = "127.0.0.2"}};
        bench->Client.SetDataFromAnywhere(anywhere);
        QSignalSpy refused(&bench->Client, &FTP::StrangerRefused);
        QVERIFY(bench->Client.PutFile({}, "a", bench->Local(Content(9000)), false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["a"] == Content(9000));
        QCOMPARE(server->DataConnections, connections);
        QCOMPARE(refused.count(), connections - 1);
    }

    void SendsPassively_data() {
        const Rows<Script, QString, ServerFault> row;
        const FtpFault noEpsv = Says("EPSV", {"500 what?\r\n"});
        row("EPSV", {}, "EPSV STOR EPSV STOR", None);
        row("EPSV refused", {noEpsv}, "EPSV PASV STOR PASV STOR", None);
        row("EPSV without a port", {Says("EPSV", {"229 ok\r\n"})}, "EPSV PASV STOR PASV STOR",
            None);
        row("both refused", {noEpsv, Says("PASV", {"502 no\r\n"})}, "EPSV PASV", PassiveBlocked);
        row("PASV nonsense", {noEpsv, Says("PASV", {"227 (127,0,0,1,256,1)\r\n"})}, "EPSV PASV",
            PassiveBlocked);
        // Wine knows it before STOR is sent.
        const bool early = QSysInfo::kernelType() == "winnt";
        row("nobody listens", {{.Verb = "EPSV", .NoDataConnection = true}},
            early ? QString("EPSV") : QString("EPSV STOR"), PassiveBlocked);
        row("the server waits in vain",
            {{.Verb = "STOR", .Chunks = {"150 x\r\n", "425 no\r\n"}, .NoDataConnection = true}},
            "EPSV STOR", PassiveBlocked);
        row("STOR refused", {Says("STOR", {"553 no\r\n"})}, "EPSV STOR", None);
    }
    void SendsPassively() {
        const auto [script, verbs, fault] = Row<Script, QString, ServerFault>();
        const bool sent = verbs.count("STOR") == 2;
        server->Script = script;
        server->PasvAddress = "10,1,2,3";  // of no use to anybody
        bench->Client.SetPassive(true);
        const qint64 start = bench->Clock.Milliseconds();
        for (int turn = 0; turn < (sent ? 2 : 1); ++turn)
            QCOMPARE(bench->Put(Content(20'000)) == 226, sent);
        QVERIFY(bench->Clock.Milliseconds() - start < 5000);
        QCOMPARE(bench->Client.Fault().Is, fault);
        QVERIFY(!sent || server->Files["a"] == Content(20'000));
        QStringList exchange;
        for (const QString& line : std::as_const(server->Commands))
            if (!line.startsWith("TYPE")) exchange << line.section(u' ', 0, 0);
        QCOMPARE(exchange.join(u' '), verbs);
    }

    void FindsThePort_data() {
        Rows<QString, int>({{"229 a (b) (|||6446|)\r\n", 6446},
                            {"229-a\r\n229 b (!!!65535!)\r\n", 65535},
                            {"229 (||||)", 0},
                            {"229 (|||0|)", 0},
                            {"229 (|||65536|)", 0},
                            {"229 (|||123456|)", 0},
                            {"229 (|||+21|)", 0},
                            {"229 (|1|10.0.0.1|21|)", 0},
                            {"200 (|||6446|)", 0},
                            {"227 Entering (10,0,0,1,4,11).\r\n", 1035},
                            {"227 10,0,0,1,255,255", 65535},
                            {"227 3 (10,0,0,1,0,0)", 0},
                            {"227 (10,0,0,1,4,256)", 0},
                            {"227 (10,0,0,1,4,11,5)", 0},
                            {"227 (10,0,0,1,4)", 0},
                            {"227 (1,,0,1,4,11)", 0}});
    }
    void FindsThePort() {
        const auto [reply, port] = Row<QString, int>();
        QCOMPARE(EpsvPort(reply).value_or(0) + PasvPort(reply).value_or(0), port);
    }

    void LeavesTheServersFileAlone() {
        server->Files["a"] = "old";
        QVERIFY(!bench->Client.PutFile({}, "a", bench->Folder.filePath("missing"), false));
        QVERIFY(!bench->Client.PutFile({}, "a", bench->Folder.path(), false));
        QCOMPARE(bench->Errors.count(), 2);
        QVERIFY(bench->Client.GetLastErrorString().contains(bench->Folder.path()));
        QCOMPARE(server->Files["a"], QByteArray("old"));
    }

    void FindsOddNamesInAListing() {
        const QByteArray listing = "- 1 a b 5 d bild\xe4\r\n- 1 a b 6 d \xc3\xa4\r\n";
        QCOMPARE(SizeInListing(listing, "bild\u00e4") + SizeInListing(listing, "\u00e4"), 11);
        QCOMPARE(SizeInListing(listing, "bild"), 0);
    }

    void CancelsFromAHandler() {
        const auto cancel = connect(&bench->Client, &FTP::SendProgress, this, [this](qint32 sent) {
            if (sent > 100'000) bench->Client.Cancel();
        });
        const QString local = bench->Local(Content(3'000'000));
        QVERIFY(!bench->Client.PutFile({}, "b", local, false));
        QVERIFY(bench->AwaitReply(226));
        disconnect(cancel);
        QVERIFY(bench->Client.PutFile({}, "b", local, false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["b"] == Content(3'000'000));
    }

  private:
    std::unique_ptr<ScriptedFtpBench> bench;
    ScriptedFtpServer* server = nullptr;
};

QTEST_GUILESS_MAIN(TestFtpTransfers)
#include "test_ftp_transfers.moc"
