#include "net/trial_bench.h"
#include "support/data_rows.h"

#include <QDir>
#include <QTemporaryDir>

using enum ServerAnswer::Fault;
using Script = QList<FtpFault>;

class TestConnectionTrial : public QObject {
    Q_OBJECT

  private slots:
    void GoesTheWayOfAPicture() {
        TrialBench bench;
        bench.Server.Folders = {"cam"};
        bench.Server.Files = {{"cam/pw.jpg", "public"}, {"cam/1pw.jpg", "on its way"}};
        const auto before = bench.Server.Files;
        ServerAccess access = bench.Access();
        access.Folder = "cam";
        QCOMPARE(bench.Trial.Run(access).Answer.Is, None);
        QVERIFY(bench.Server.Files == before);
        QVERIFY(!bench.Server.Commands.join(u' ').contains("pw.jpg"));
        QVERIFY(bench.Log.Commands.filter("STOR").size() == 2);
        QVERIFY(bench.Log.Commands.filter("secret").isEmpty());
        QVERIFY(bench.Time.RunUntil([&bench] { return bench.Server.OpenConnections == 0; }, 1000));
    }

    void SaysWhatFailed_data() {
        const Rows<Script, ServerFault, QString> row;
        row("no greeting", {{.Verb = "CONNECT", .Silent = true}}, NotThisWay, "");
        row("too many users", {Says("CONNECT", {"421 full\r\n"})}, ServerRefused, "421 full");
        row("no answer to the login", {{.Verb = "PASS", .Silent = true}}, NoAnswer,
            "331 password?");
        row("wrong password", {Says("PASS", {"530 Authentication failed\r\n"})}, LoginRefused,
            "530 Authentication failed");
        row("encryption wanted", {Says("USER", {"530 Use AUTH first\r\n"})}, EncryptionNeeded,
            "530 Use AUTH first");
        row("no such folder", {Says("CWD", {"550 none\r\n"})}, FolderMissing, "550 none");
        row("address refused", {Says("PORT", {"500 illegal PORT\r\n"})}, DataBlocked,
            "500 illegal PORT");
        row("another connects",
            {{.Verb = "STOR", .NoDataConnection = true, .DataFrom = "127.0.0.2"}},
            DataFromElsewhere, "127.0.0.2");
        row("cannot connect back", {Says("STOR", {"425 cannot\r\n"})}, DataBlocked, "425 cannot");
        row("silent while it connects",
            {{.Verb = "STOR", .Silent = true, .NoDataConnection = true}}, DataBlocked, "");
        row("may not store", {Says("STOR", {"553 no\r\n"})}, MayNotStore, "553 no");
        row("no room", {Says("DONE", {"452 full\r\n"})}, NoRoom, "452 full");
        row("may not rename", {Says("RNFR", {"550-no\r\n550 way.\r\n"})}, RenameRefused, "550 way");
        row("may not delete", {Says("DELE", {"550 no\r\n"})}, DeleteRefused, "550 no");
        row("lost while renaming", {Closes("RNTO")}, ConnectionLost, "");
    }
    void SaysWhatFailed() {
        const auto [script, result, reply] = Row<Script, ServerFault, QString>();
        TrialBench bench;
        bench.Server.Script = script;
        const qint64 start = bench.Time.Milliseconds();
        const TrialOutcome outcome = bench.Trial.Run(bench.Access());
        QCOMPARE(outcome.Answer.Is, result);
        QCOMPARE(outcome.Answer.Reply, reply);
        QVERIFY(bench.Time.Milliseconds() - start < 70'000);
        const QStringList left = bench.Own();
        // What it may have left it names; of a server that answers it leaves nothing.
        QVERIFY(left.isEmpty() || left[0].chopped(5) == outcome.LeftBehind.chopped(5));
        QCOMPARE(outcome.LeftBehind.isEmpty(), result != ConnectionLost && result != DeleteRefused);
    }

    void ReachesNobody_data() {
        const Rows<QString, ServerFault> row;
        row("no such name", "no.such.host.invalid", HostNotFound);
        row("nobody listens", "127.0.0.1", Refused);
    }
    void ReachesNobody() {
        const auto [host, result] = Row<QString, ServerFault>();
        TrialBench bench(100);
        bench.Server.StopListening();
        ServerAccess access = bench.Access();
        access.Server = host;
        QCOMPARE(bench.Trial.Run(access).Answer.Is, result);
    }

    // Servers that do not rename over a file work with the option for them.
    void DeletesFirst() {
        TrialBench bench;
        bench.Server.RefuseRenameOver = true;
        ServerAccess access = bench.Access();
        QCOMPARE(bench.Trial.Run(access).Answer.Is, ReplaceRefused);
        access.DeleteFirst = true;
        QCOMPARE(bench.Trial.Run(access).Answer.Is, None);
        QVERIFY(bench.Server.Files.isEmpty());
    }

    void IsCancelled_data() {
        const Rows<FtpFault, bool> row;
        row("while it logs in", {.Verb = "PASS", .Silent = true}, true);
        row("while it stores", {.Verb = "STOR", .NoDataConnection = true}, true);
        row("by the end of the program", {.Verb = "DONE", .Silent = true}, false);
    }
    void IsCancelled() {
        const auto [fault, byOperator] = Row<FtpFault, bool>();
        TrialBench bench;
        bench.Server.Script = {fault};
        Timer soon(bench.Time, 2000);
        connect(&soon, &Timer::Tick, this, [&bench, byOperator = byOperator] {
            if (byOperator)
                bench.Trial.Cancel();
            else
                bench.Wait.Close();
        });
        soon.SetEnabled(true);
        const qint64 start = bench.Time.Milliseconds();
        QCOMPARE(bench.Trial.Run(bench.Access()).Answer.Is, Cancelled);
        QVERIFY(bench.Time.Milliseconds() - start < 6000);
        QVERIFY(bench.Time.RunUntil([&bench] { return bench.Server.OpenConnections == 0; }, 1000));
        QCOMPARE(bench.Own(), QStringList());
    }

    void TriesAFolder() {
        TrialBench bench;
        const QTemporaryDir folder;
        ServerAccess access{.Server = "Local", .Folder = folder.path(), .Local = true};
        QCOMPARE(bench.Trial.Run(access).Answer.Is, None);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
        access.Folder = folder.filePath("none");
        QCOMPARE(bench.Trial.Run(access).Answer.Is, LocalFolderMissing);
        access.Folder = "/proc";  // nobody can store there, not even root
        QCOMPARE(bench.Trial.Run(access).Answer.Is, LocalNotWritable);
    }
};

QTEST_GUILESS_MAIN(TestConnectionTrial)
#include "test_connection_trial.moc"
