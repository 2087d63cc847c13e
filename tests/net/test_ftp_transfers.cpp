#include "net/ftp_bench.h"
#include "net/listing.h"
#include "support/data_rows.h"

using Script = QList<FtpFault>;

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
        const Rows<int, QList<int>> row;
        row("empty", 0, {0});
        row("one block", 700, {700});
        row("block and final part", 5000, {4196, 5000});
        row("two whole blocks", 16392, {8196, 16393, 16392});
    }
    void Sends() {
        const auto [size, steps] = Row<int, QList<int>>();
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
        QCOMPARE(bench->Sent.value(2).value(0).toString(), QStringLiteral("TYPE I "));
        QCOMPARE(bench->Errors.count(), 0);
    }

    // An upload either ends in success with the file complete on the server, or in failure, and the
    // next one succeeds after a reconnect; no data element is left.
    void SendsInSpiteOf_data() {
        const Rows<FtpFault, bool, bool> row;  // sent; ends before the time limit
        row("TYPE missing", {.Verb = "TYPE", .Silent = true}, false, false);
        row("PORT refused", Says("PORT", {"500 no\r\n"}), false, true);
        row("PORT in pieces", Says("PORT", {"200 p", "ort\r\n"}), true, true);
        row("STOR late", {.Verb = "STOR", .DelayMilliseconds = 20'000}, true, false);
        row("STOR refused", Says("STOR", {"553 no\r\n"}), false, true);
        row("nobody connects", {.Verb = "STOR", .NoDataConnection = true}, false, false);
        row("STOR missing", {.Verb = "STOR", .Silent = true, .NoDataConnection = true}, false,
            false);
        row("closed in the middle", {.Verb = "STOR", .CloseControl = true}, false, true);
        row("nobody can connect",
            {.Verb = "STOR", .Chunks = {"150 x\r\n", "425 x\r\n"}, .NoDataConnection = true}, false,
            true);
        row("data closed at once", {.Verb = "STOR", .DataBytes = 0}, false, true);
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
        QVERIFY(bench->Get("a"));
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

    void FindsSizesInListings() {
        const QByteArray line("-rw-r--r--   1 cam  users    12345 Jan  1 10:00 pw.jpg\r\n");
        const QList<std::pair<QByteArray, qint32>> listings{
            {"total 8\r\n" + line + "-rw   1 cam  users   7 Jan  1 10:00 1pw.jpg\r\n", 12345},
            {"-r 1 a b 5 x pw.jpg\n-r 1 a b 6 x pw.jpg", 6},
            {"-r 1 a b 5 x PW.JPG\n", 0},
            {"pw.jpg\n5 pw.jpg\n", 0},
            {"-r 1 a b c pw.jpg\n", 0},
            {"-r 1 a b 99999999999999999999 pw.jpg\n", 2147483647}};
        for (const auto& [listing, size] : listings)
            QCOMPARE(SizeInListing(listing, "pw.jpg"), size);
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
        const Rows<Script, bool, QString> row;
        const FtpFault noSize = Says("SIZE", {"500 what?\r\n"});
        row("SIZE late", {{.Verb = "SIZE", .DelayMilliseconds = 90'000}}, true, "0");
        row("size in a listing", {noSize}, true, "0");
        row("no such size", {Says("SIZE", {"550 no\r\n"})}, false, "500");
        row("closed at SIZE", {Closes("SIZE")}, false, "500");
        row("PORT refused", {Says("PORT", {"501 no\r\n"})}, false, "501");
        row("listing refused", {noSize, Says("LIST", {"550 no\r\n"})}, false, "500");
        row("listing never comes", {noSize, {.Verb = "LIST", .NoDataConnection = true}}, false,
            "500");
        row("RETR refused", {Says("RETR", {"550 no\r\n"})}, false, "0");
        row("data closed early", {{.Verb = "RETR", .DataBytes = 9000}}, false, "0");
        row("closed in the middle", {{.Verb = "RETR", .CloseControl = true}}, false, "0");
        row("end missing", {{.Verb = "DONE", .Silent = true}}, true, "0");
    }
    void Fetches() {
        const auto [script, fetched, error] = Row<Script, bool, QString>();
        server->Files["a"] = Content(20'000);
        server->Script = script;
        QCOMPARE(bench->Get("a"), fetched);
        if (fetched) QVERIFY(bench->FetchedBytes() == Content(20'000));
        QCOMPARE(bench->Client.GetLastErrorCode(), error);
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

    void Lists() {
        server->Files["a"] = "xyz";
        QVERIFY(bench->Client.DirListing(bench->Fetched()));
        QVERIFY(bench->FetchedBytes().endsWith(" 3 Jan  1 10:00 a\r\n"));
        server->Files.clear();
        QVERIFY(bench->AwaitReply(226));
        QVERIFY(bench->Client.DirListing(bench->Fetched()));
        QCOMPARE(bench->FetchedBytes(), QByteArray());
        QVERIFY(bench->AwaitReply(226));
        for (const QString& verb : QStringList{"LIST", "PORT"}) {
            server->Script = {Says(verb, {"550 no\r\n"})};
            QVERIFY(!bench->Client.DirListing(bench->Fetched()));
        }
        server->Script = {{.Verb = "LIST", .CloseControl = true}};
        QVERIFY(!bench->Client.DirListing(bench->Fetched()));
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

  private:
    std::unique_ptr<ScriptedFtpBench> bench;
    ScriptedFtpServer* server = nullptr;
};

QTEST_GUILESS_MAIN(TestFtpTransfers)
#include "test_ftp_transfers.moc"
