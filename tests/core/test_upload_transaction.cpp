#include "net/web/http_server.h"
#include "support/cycle_fixture.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/scripted_web_server.h"

#include <QSignalSpy>

namespace {

const QString wrongLogin =
    "Stillpost: The Server dont exists or Username or Password is wrong!\n"
    "Maybe the Connect was blocked by a Firewall!";
const QString wrongLoginGerman =
    "Stillpost: Der angebebene Server existiert nicht oder der Username bzw. Passwort ist "
    "falsch!\nEventuell wurde der Connect durch eine Firewall verhindert.";

// Puts a picture where the next upload takes it from.
QString Picture(const CycleFixture& f, const QByteArray& bytes) {
    const QString file = f.State.WorkFile("1pw.jpg");
    return WriteBytes(file, bytes) ? file : QString();
}

}  // namespace

class TestUploadTransaction : public QObject {
    Q_OBJECT

  private slots:
    void LogsInAndChangesFolder() {
        CycleFixture f;
        f.Server.AnyFolder = true;
        f.State.Values.Verzeichnis = "Bilder für alle";
        f.Transaction.HistoryCounter = 5;
        QVERIFY(f.Transaction.ConnectFtp());
        QCOMPARE(f.Transaction.HistoryCounter, 0);
        QVERIFY(!f.Transaction.Flags.ConnectionDown && f.Transaction.Flags.QuietErrors);
        QCOMPARE(f.Server.Commands.last(), "cwd Bilder für alle");
        QVERIFY(!f.Display.Commands.join(u' ').contains("secret"));
    }

    void FailedFirstConnectTellsAndStops_data() {
        const Rows<QString, bool, QString, QString, TroubleKind> row;
        using enum TroubleKind;
        row("wrong password", "", false, "", wrongLogin, Login);
        row("wrong password, German", "", true, "", wrongLoginGerman, Login);
        const QString missing = "Stillpost: The Path 'web/cam 'dont exists on Server!";
        row("missing folder", "web/cam", false, "", missing, Folder);
        row("missing folder, German", "web/cam", true, "",
            "Stillpost: Das Verzeichniss 'web/cam' existiert nicht auf dem Server!", Folder);
        row("name not allowed", "web/cam", false, "553 no", missing, Folder);
        row("name not understood", "web/cam", false, "501 no", missing, Folder);
        row("folder locked", "web/cam", false, "450 later",
            "Stillpost: 127.0.0.1 lets nobody into the folder web/cam now (450 later): try again "
            "later, or ask your provider.",
            Folder);
    }
    void FailedFirstConnectTellsAndStops() {
        const auto [folder, german, reply, message, kind] =
            Row<QString, bool, QString, QString, TroubleKind>();
        CycleFixture f;
        f.State.LangGerman = german;
        f.State.Values.Verzeichnis = folder;
        if (folder.isEmpty()) f.Server.Password = "another";
        if (!reply.isEmpty()) f.Server.Script = {Says("CWD", {reply + "\r\n"})};
        f.Display.Recording = "Rec.";
        f.Transaction.Flags.QuietErrors = true;  // of the run before
        f.Cycle.Start();
        QCOMPARE(f.Display.Recording, QString());
        QCOMPARE(f.Display.Statuses.last(), "Offline");
        f.Time.Advance(1'000);
        QVERIFY(!f.Display.Online);
        QCOMPARE(f.Boxes.Shown, QStringList{message});
        QVERIFY(f.Transaction.Flags.ConnectionDown);
        QCOMPARE(f.Display.States,
                 QStringList({"connecting", "stopped: " + f.Transaction.Failure().Why}));
        QCOMPARE(f.Run.Ongoing()->Kind, kind);
        QVERIFY2(!f.Transaction.ConnectFtp(), "refused until the failure is cleared");
    }

    void LaterFailuresAreQuiet() {
        CycleFixture f;
        QVERIFY(f.Transaction.ConnectFtp());
        f.State.Values.Verzeichnis = "gone";
        QSignalSpy failed(&f.Transaction, &UploadTransaction::Failed);
        QVERIFY(!f.Transaction.ConnectFtp());
        QCOMPARE(failed.count() + f.Boxes.Shown.size(), 0);
        QVERIFY2(f.Transaction.Flags.ConnectionDown, "until the cycle tries again");
        QVERIFY2(!f.Ftp.IsConnected(), "pictures must not land in the start folder");
    }

    void OfflineAsksForRetry_data() {
        const Rows<bool> row;
        row("retry goes on", true);
        row("cancel stops", false);
    }
    void OfflineAsksForRetry() {
        const auto [retry] = Row<bool>();
        CycleFixture f;
        f.Net.SetStopped(false);
        f.System.Online.Set(false);
        f.Boxes.Retry = retry;
        QVERIFY(!f.Transaction.ConnectFtp());
        QCOMPARE(f.Boxes.Shown, QStringList("Stillpost: No Connection to Internet possible!"));
        QCOMPARE(f.Transaction.Flags.QuietErrors, retry);
        QVERIFY(f.Transaction.Flags.ConnectionDown);
        QCOMPARE(f.Display.Statuses.last() == "Offline", !retry);
        QCOMPARE(f.Server.Connections, 0);
    }

    void StepFaults_data() {
        const Rows<QList<FtpFault>, bool> row;
        row("data connection open already", {Says("STOR", {"125 already open\r\n"})}, true);
        row("226 behind 150",
            {Says("STOR", {"150 go\r\n226 done\r\n"}), {.Verb = "DONE", .Silent = true}}, true);
        row("226 in two parts", {Says("DONE", {"22", "6 done\r\n"})}, true);
        row("226 in several lines", {Says("DONE", {"226-a\r\n", "550 b\r\n", "226 c\r\n"})}, true);
        row("226 never closed", {Says("DONE", {"226-a\r\n"})}, true);
        row("200 never closed", {Says("TYPE", {"200-a\r\n"})}, true);
        row("226 forty seconds late", {{.Verb = "DONE", .DelayMilliseconds = 40'000}}, true);
        row("226 too late", {{.Verb = "DONE", .DelayMilliseconds = 46'000}}, false);
        row("disk of the server full", {Says("DONE", {"552 disk full\r\n"})}, false);
        row("no data connection", {{.Verb = "STOR", .NoDataConnection = true}}, false);
        row("data connection cut", {{.Verb = "STOR", .DataBytes = 3}}, false);
        row("421 in the middle",
            {{.Verb = "STOR", .Chunks = {"421 bye\r\n"}, .CloseControl = true}}, false);
        row("rename refused", {Says("RNTO", {"532 no\r\n"})}, false);
    }
    void StepFaults() {
        const auto [script, published] = Row<QList<FtpFault>, bool>();
        CycleFixture f;
        f.Server.Files = {{"pw.jpg", "old"}};
        QVERIFY(f.Transaction.ConnectFtp());
        f.Server.Script = script;
        const QByteArray picture(900'000, 'x');
        const qint64 start = f.Time.Milliseconds();
        QCOMPARE(f.Transaction.Publish(Picture(f, picture)), published);
        QCOMPARE(f.Transaction.Flags.FtpError, !published);
        // A rename whose reply was lost or false has happened all the same.
        const bool replaced = published || script.first().Verb == "RNTO";
        QCOMPARE(f.Server.Files.value("pw.jpg"), replaced ? picture : QByteArray("old"));
        QVERIFY(!f.Display.LabelVisible);
        const bool refused = script.first().Chunks.value(0).startsWith(u'5');
        QVERIFY2(!refused || f.Time.Milliseconds() - start < 5000, "no time limit had to pass");
        if (!f.Display.Uploads.isEmpty()) QCOMPARE(f.Display.Uploads.first(), 25);
    }

    void MakesThePictureReadable_data() {
        const Rows<QString, QStringList, QStringList> row;
        const QStringList fine{"200 done\r\n"};
        row("first when it is public, then ahead", "640", fine,
            {"640 pw.jpg", "640 1pw.jpg", "640 1pw.jpg"});
        row("unknown", "644", {"502 what?\r\n"}, {"644 pw.jpg"});
        row("no answer", "644", {}, {"644 pw.jpg"});
        row("busy", "644", {"450 later\r\n"}, {"644 pw.jpg", "644 pw.jpg", "644 pw.jpg"});
        row("not wanted", "", fine, {});
    }
    void MakesThePictureReadable() {
        const auto [mode, answer, asked] = Row<QString, QStringList, QStringList>();
        CycleFixture f;
        f.State.Values.FileMode = mode;
        f.Server.Script = {{.Verb = "SITE", .Chunks = answer, .Silent = answer.isEmpty()}};
        f.Cycle.Start();
        QVERIFY(f.RunUntilPublished(3));
        QStringList commands = f.Server.Commands.filter("SITE CHMOD ");
        QCOMPARE(commands.replaceInStrings("SITE CHMOD ", QString()), asked);
    }

    void DeletesNothingWhereARenameReplaces() {
        CycleFixture f;
        ScriptedWebServer web;
        web.Script = {{.Verb = "DELETE", .Answer = "405 No"}};
        HttpServer server({f.Wait, f.Display});
        f.Transaction.Use(server);
        Settings& values = f.State.Values;
        values.Protocol = "http";
        values.Port = web.serverPort();
        values.Delete = values.lastpictures = true;
        values.lastpictureanz = 2;
        QVERIFY(f.Transaction.ConnectFtp());
        for (int i = 0; i < 33; ++i) QVERIFY(f.Transaction.Publish(Picture(f, "picture")));
        QCOMPARE(web.Files.keys(), QByteArrayList({"/pw.jpg", "/pw1.jpg", "/pw2.jpg"}));
        QCOMPARE(web.Said().filter("DELETE").size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestUploadTransaction)
#include "test_upload_transaction.moc"
