#include "net/ftp_bench.h"
#include "support/scripted_ftp_server.h"

using Script = QList<FtpFault>;
Q_DECLARE_METATYPE(Script)

// Transfers against the scripted server: what is on the wire, and what happens when it is wrong.
class TestFtpTransfers : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        bench = std::make_unique<FtpBench>(quint16(0));
        server = std::make_unique<ScriptedFtpServer>(bench->Clock);
        bench->Client.SetRemotePort(server->Port());
        QVERIFY(bench->Client.Connect());
        server->Commands.clear();
    }
    void cleanup() {
        server.reset();
        bench.reset();
    }

    void Sends_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<QList<int>>("progress");
        QTest::addRow("empty") << 0 << QList<int>{0};
        QTest::addRow("one block") << 700 << QList<int>{700};
        QTest::addRow("block and final part") << 5000 << QList<int>{4196, 5000};
        QTest::addRow("two whole blocks") << 16392 << QList<int>{8196, 16393, 16392};
    }
    void Sends() {
        QFETCH(int, size);
        QSignalSpy progress(&bench->Client, &FTP::SendProgress);
        server->AnyFolder = true;
        QVERIFY(bench->Client.PutFile("a/b", "1pw.jpg", bench->Local(Content(size)), false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["a/b/1pw.jpg"] == Content(size));
        QList<int> sent;
        for (const auto& arguments : progress) sent << arguments[0].toInt();
        QTEST(sent, "progress");
        QCOMPARE(progress.last()[1].toInt(), size);
        QStringList exchange = server->Commands;
        QVERIFY(exchange.value(2).startsWith("PORT 127,0,0,1,"));
        exchange.removeAt(2);
        QCOMPARE(exchange, (QStringList{"CWD a/b", "TYPE I", "STOR 1pw.jpg"}));
        QCOMPARE(bench->Sent.value(2).value(0).toString(), QStringLiteral("TYPE I "));
        QCOMPARE(bench->Errors.count(), 0);
    }

    // An upload either ends in success with the file complete on the server, or in failure, and the
    // next one succeeds after a reconnect; no data element is left.
    void SendsInSpiteOf_data() {
        QTest::addColumn<Script>("script");
        QTest::addColumn<bool>("sent");
        const auto row = [](const char* name, const FtpFault& fault, bool sent) {
            QTest::addRow("%s", name) << Script{fault} << sent;
        };
        row("TYPE late", {.Verb = "TYPE", .DelayMilliseconds = 20'000}, true);
        row("TYPE missing", {.Verb = "TYPE", .Silent = true}, false);
        row("TYPE joined with the next", {.Verb = "TYPE", .JoinNext = true}, false);
        row("PORT refused", {.Verb = "PORT", .Chunks = {"500 no\r\n"}}, false);
        row("PORT in pieces", {.Verb = "PORT", .SplitAt = 5}, true);
        row("STOR late", {.Verb = "STOR", .DelayMilliseconds = 20'000}, true);
        row("STOR in pieces", {.Verb = "STOR", .SplitAt = 1}, true);
        row("STOR with another code", {.Verb = "STOR", .Chunks = {"125 go\r\n"}}, true);
        row("STOR joined with the end", {.Verb = "STOR", .Chunks = {"150 a\r\n226 b\r\n"}}, true);
        row("STOR refused", {.Verb = "STOR", .Chunks = {"553 no\r\n"}}, false);
        row("STOR missing", {.Verb = "STOR", .Silent = true, .NoDataConnection = true}, false);
        row("421 in the middle", {.Verb = "STOR", .Chunks = {"421 x\r\n"}, .CloseControl = true},
            false);
        row("closed in the middle", {.Verb = "STOR", .CloseControl = true}, false);
        row("nobody connects", {.Verb = "STOR", .NoDataConnection = true}, false);
        row("nobody can connect",
            {.Verb = "STOR", .Chunks = {"150 x\r\n", "425 x\r\n"}, .NoDataConnection = true},
            false);
        row("data closed at once", {.Verb = "STOR", .DataBytes = 0}, false);
        row("data closed early", {.Verb = "STOR", .DataBytes = 9000}, false);
        row("end missing", {.Verb = "DONE", .Silent = true}, true);
    }
    void SendsInSpiteOf() {
        QFETCH(Script, script);
        QFETCH(bool, sent);
        server->Script = script;
        const QString local = bench->Local(Content(3'000'000));
        QCOMPARE(bench->Client.PutFile({}, "a", local, false), sent);
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
        QVERIFY(bench->Get("a"));
    }

    void EndsAtOnceWhenHopeless_data() {
        QTest::addColumn<FtpFault>("fault");
        QTest::addRow("refused") << FtpFault{.Verb = "STOR", .Chunks = {"553 no\r\n"}};
        QTest::addRow("closed") << FtpFault{.Verb = "STOR", .CloseControl = true};
        QTest::addRow("data closed") << FtpFault{.Verb = "STOR", .DataBytes = 100};
    }
    void EndsAtOnceWhenHopeless() {
        QFETCH(FtpFault, fault);
        server->Script = {fault};
        const qint64 start = bench->Clock.Milliseconds();
        QVERIFY(!bench->Client.PutFile({}, "a", bench->Local(Content(3'000'000)), false));
        QVERIFY(bench->Clock.Milliseconds() - start < 1000);
    }

    void LeavesTheServersFileAlone() {
        server->Files["a"] = "old";
        QVERIFY(!bench->Client.PutFile({}, "a", bench->Folder.filePath("missing"), false));
        QVERIFY(!bench->Client.PutFile({}, "a", bench->Folder.path(), false));
        QCOMPARE(bench->Errors.count(), 2);
        QVERIFY(bench->Client.GetLastErrorString().contains(bench->Folder.path()));
        QCOMPARE(server->Files["a"], QByteArray("old"));
    }

    // A file that another program cuts while it is being sent.
    void EndsWithAFileThatShrinks() {
        const QString local = bench->Local(Content(1'000'000));
        connect(&bench->Client, &FTP::SendProgress, this, [local](qint32 sent) {
            if (sent > 100'000) QVERIFY(QFile::resize(local, 50'000));
        });
        QVERIFY(!bench->Client.PutFile({}, "a", local, false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(Content(1'000'000).startsWith(server->Files["a"]));
    }

    void CancelsFromAHandler() {
        server->Files["a"] = Content(3'000'000);
        const auto cancel = connect(&bench->Client, &FTP::SendProgress, this, [this](qint32 sent) {
            if (sent > 100'000) bench->Client.Cancel();
        });
        connect(&bench->Client, &FTP::ReceiveProgress, &bench->Client, &FTP::Cancel);
        const QString local = bench->Local(Content(3'000'000));
        QVERIFY(!bench->Client.PutFile({}, "b", local, false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(!bench->Get("a"));
        QVERIFY(bench->AwaitReply(226));
        disconnect(cancel);
        QVERIFY(bench->Client.PutFile({}, "b", local, false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["b"] == Content(3'000'000));
    }

    void Fetches_data() {
        QTest::addColumn<Script>("script");
        QTest::addColumn<bool>("fetched");
        QTest::addColumn<QString>("error");
        const auto row = [](const char* name, const Script& script, bool fetched,
                            const char* error = "0") {
            QTest::addRow("%s", name) << script << fetched << QString::fromLatin1(error);
        };
        row("ordinary", {}, true);
        row("SIZE late", {{.Verb = "SIZE", .DelayMilliseconds = 90'000}}, true);
        row("size in a listing", {{.Verb = "SIZE", .Chunks = {"500 what?\r\n"}}}, true);
        row("no such size", {{.Verb = "SIZE", .Chunks = {"550 no\r\n"}}}, false, "500");
        row("closed at SIZE", {{.Verb = "SIZE", .Silent = true, .CloseControl = true}}, false,
            "500");
        row("PORT refused", {{.Verb = "PORT", .Chunks = {"501 no\r\n"}}}, false, "501");
        row("listing refused",
            {{.Verb = "SIZE", .Chunks = {"500 what?\r\n"}},
             {.Verb = "LIST", .Chunks = {"550 no\r\n"}}},
            false, "500");
        row("listing never comes",
            {{.Verb = "SIZE", .Chunks = {"500 what?\r\n"}},
             {.Verb = "LIST", .NoDataConnection = true}},
            false, "500");
        row("RETR refused", {{.Verb = "RETR", .Chunks = {"550 no\r\n"}}}, false);
        row("nobody can connect", {{.Verb = "RETR", .Chunks = {"425 no\r\n"}}}, false);
        row("data closed early", {{.Verb = "RETR", .DataBytes = 9000}}, false);
        row("closed in the middle", {{.Verb = "RETR", .CloseControl = true}}, false);
        row("end missing", {{.Verb = "DONE", .Silent = true}}, true);
    }
    void Fetches() {
        QFETCH(Script, script);
        QFETCH(bool, fetched);
        server->Files["a"] = Content(20'000);
        server->Script = script;
        QCOMPARE(bench->Get("a"), fetched);
        if (fetched) QVERIFY(bench->FetchedBytes() == Content(20'000));
        QTEST(bench->Client.GetLastErrorCode(), "error");
        QVERIFY(!QFile::exists(bench->Folder.filePath("dirxca.dat")));
        // No element is left, or this one could not receive.
        server->Script.clear();
        bench->Client.Disconnect();
        QVERIFY(bench->Client.Connect());
        QVERIFY(bench->Get("a"));
    }

    // A server may announce the transfer before it opens the connection.
    void WaitsForALateConnection() {
        server->RepliesBeforeConnecting = true;
        server->KnowsSize = false;
        server->Files["a"] = Content(5000);
        QCOMPARE(bench->Client.GetRemoteFileSize({}, "a"), 5000);
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(bench->Client.DirListing(bench->Fetched()));
        QVERIFY(bench->FetchedBytes().contains("5000 Jan  1 10:00 a\r\n"));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(bench->Client.PutFile({}, "b", bench->Local(Content(5000)), false));
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(server->Files["b"] == Content(5000));
    }

    void Lists_data() {
        QTest::addColumn<FtpFault>("fault");
        QTest::addColumn<bool>("listed");
        QTest::addRow("ordinary") << FtpFault{} << true;
        QTest::addRow("refused") << FtpFault{.Verb = "LIST", .Chunks = {"550 no\r\n"}} << false;
        QTest::addRow("closed") << FtpFault{.Verb = "LIST", .CloseControl = true} << false;
        QTest::addRow("PORT refused")
            << FtpFault{.Verb = "PORT", .Chunks = {"500 no\r\n"}} << false;
    }
    void Lists() {
        QFETCH(FtpFault, fault);
        server->Files["a"] = "xyz";
        server->Script = {fault};
        QTEST(bench->Client.DirListing(bench->Fetched()), "listed");
        if (!fault.Verb.isEmpty()) return;
        QVERIFY(bench->FetchedBytes().endsWith(" 3 Jan  1 10:00 a\r\n"));
        server->Files.clear();
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(bench->Client.DirListing(bench->Fetched()));
        QCOMPARE(bench->FetchedBytes(), QByteArray());
    }

    // Folders as the operations name them, and what a refused folder means for each.
    void ChangesFolders() {
        FTP& client = bench->Client;
        server->Folders = QStringList{"a", "a/b", "a\\b"};
        server->Files = {{"x", "1"}, {"a/b/x", "22"}, {"a\\b/x", "4444"}};
        QCOMPARE(client.GetRemoteFileSize("a/b", "x"), 2);
        QCOMPARE(server->Commands, (QStringList{"CWD a/b", "TYPE I", "SIZE x", "CDUP a/b"}));
        QVERIFY(client.KillFile("b", "x"));
        QVERIFY(!server->Files.contains("a/b/x"));
        QVERIFY(!client.Rename("nowhere", "x", "y"));
        QVERIFY(!client.PutFile("nowhere", "x", bench->Local("z"), false));
        // The size is looked up before the folder is changed, so it is that of the other file.
        QString response;
        QVERIFY(client.Execute("CWD /", response));
        QString folder = QStringLiteral("a/b");
        server->Commands.clear();
        QVERIFY(client.GetFile(folder, "x", bench->Fetched(), true));
        QCOMPARE(folder, QStringLiteral("a\\b"));
        QCOMPARE(server->Commands.mid(0, 4),
                 (QStringList{"TYPE I", "SIZE x", "CWD a\\b", "TYPE A"}));
    }

    // After a refused PORT the element of an upload stays; above it nothing is received.
    void KeepsTheElementOfARefusedUpload() {
        server->Files["a"] = Content(700);
        server->Script = {{.Verb = "PORT", .Occurrence = 1, .Chunks = {"500 no\r\n"}}};
        QVERIFY(!bench->Client.PutFile({}, "b", bench->Local("x"), false));
        QVERIFY(!bench->Get("a"));
        bench->Client.Cancel();
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(bench->Get("a"));
    }

    // A whole upload has to end within the limit, however steadily it goes on.
    void LimitsAnUpload() {
        server->Script = {{.Verb = "STOR", .NoDataConnection = true}};
        const qint64 start = bench->Clock.Milliseconds();
        QVERIFY(!bench->Client.PutFile({}, "a", bench->Local("x"), false));
        QCOMPARE(bench->Clock.Milliseconds() - start, 31'000);
        QCOMPARE(bench->Display.Statuses, QStringList{"Time out !"});
    }

  private:
    std::unique_ptr<FtpBench> bench;
    std::unique_ptr<ScriptedFtpServer> server;
};

QTEST_GUILESS_MAIN(TestFtpTransfers)
#include "test_ftp_transfers.moc"
