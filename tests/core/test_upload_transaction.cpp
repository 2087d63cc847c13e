#include "support/cycle_fixture.h"

#include <QtTest>

namespace {

const QString wrongLogin =
    "Stillpost: The Server dont exists or Username or Password is wrong!\n"
    "Maybe the Connect was blocked by a Firewall!";
const QString wrongLoginGerman =
    "Stillpost: Der angebebene Server existiert nicht oder der Username bzw. Passwort ist "
    "falsch!\nEventuell wurde der Connect durch eine Firewall verhindert.";

}  // namespace

class TestUploadTransaction : public QObject {
    Q_OBJECT

  private slots:
    void LogsInAndChangesFolder_data();
    void LogsInAndChangesFolder();
    void FailedFirstConnectTellsAndStops_data();
    void FailedFirstConnectTellsAndStops();
    void LaterFailuresAreQuiet();
    void OfflineAsksForRetry_data();
    void OfflineAsksForRetry();
    void PublishOnTheWire_data();
    void PublishOnTheWire();
    void StepFaults_data();
    void StepFaults();
    void CountdownIsShownInTheLastThirtySeconds();
    void LostConnectionEndsTheWait();
    void CloseRaisesConnectionDown();
};

void TestUploadTransaction::LogsInAndChangesFolder_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("command");
    QTest::addRow("empty folder is a dot") << ""
                                           << "cwd .";
    QTest::addRow("umlauts and blanks") << "Bilder für alle"
                                        << "cwd Bilder für alle";
}

void TestUploadTransaction::LogsInAndChangesFolder() {
    QFETCH(QString, folder);
    CycleFixture f;
    f.Server.AnyFolder = true;
    f.State.Values.Verzeichnis = folder;
    QVERIFY(f.Transaction.ConnectFtp());
    QVERIFY(!f.Transaction.Flags.ConnectionDown);
    QVERIFY(f.Transaction.Flags.QuietErrors);
    const QStringList statuses{"Setup fast FTP", "Connecting...", "Change Dir"};
    QCOMPARE(f.Display.Statuses, statuses);
    QTEST(f.Server.Commands.last(), "command");
    QVERIFY(!f.Display.Commands.join(u' ').contains("secret"));
}

void TestUploadTransaction::FailedFirstConnectTellsAndStops_data() {
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("german");
    QTest::addColumn<QString>("message");
    QTest::addRow("wrong password") << "password" << false << wrongLogin;
    QTest::addRow("wrong password, German") << "password" << true << wrongLoginGerman;
    QTest::addRow("nobody listens") << "refused" << false << wrongLogin;
    QTest::addRow("silent server") << "silent" << false << wrongLogin;
    QTest::addRow("missing folder")
        << "folder" << false << "Stillpost: The Path 'web/cam 'dont exists on Server!";
    QTest::addRow("missing folder, German")
        << "folder" << true
        << "Stillpost: Das Verzeichniss 'web/cam' existiert nicht auf dem Server!";
}

void TestUploadTransaction::FailedFirstConnectTellsAndStops() {
    QFETCH(QString, fault);
    QFETCH(bool, german);
    CycleFixture f;
    f.State.LangGerman = german;
    if (fault == "password") f.Server.Password = "another";
    if (fault == "refused") f.Server.StopListening();
    if (fault == "silent") f.Server.Script = {{.Verb = "CONNECT", .Silent = true}};
    if (fault == "folder") f.State.Values.Verzeichnis = "web/cam";
    QSignalSpy failed(&f.Transaction, &UploadTransaction::Failed);
    QSignalSpy buttons(&f.Transaction, &UploadTransaction::ButtonsEnabled);
    QVERIFY(!f.Transaction.ConnectFtp());
    QCOMPARE(failed.count(), 1);
    QCOMPARE(f.Boxes.Shown.size(), 1);
    QTEST(f.Boxes.Shown.first(), "message");
    QVERIFY(f.Transaction.Flags.ConnectionDown);
    QCOMPARE(buttons.first(), (QVariantList{false, false}));
    QCOMPARE(buttons.last(), (QVariantList{true, false}));
    QVERIFY2(!f.Transaction.ConnectFtp(), "refused until the failure is cleared");
}

void TestUploadTransaction::LaterFailuresAreQuiet() {
    CycleFixture f;
    QVERIFY(f.Transaction.ConnectFtp());
    f.State.Values.Verzeichnis = "gone";
    QSignalSpy failed(&f.Transaction, &UploadTransaction::Failed);
    QVERIFY(!f.Transaction.ConnectFtp());
    QCOMPARE(failed.count(), 0);
    QCOMPARE(f.Boxes.Shown, QStringList());
    QVERIFY(!f.Transaction.Flags.ConnectionDown);
    QVERIFY2(!f.Ftp.IsConnected(), "pictures must not land in the start folder");
}

void TestUploadTransaction::OfflineAsksForRetry_data() {
    QTest::addColumn<bool>("retry");
    QTest::addRow("retry goes on") << true;
    QTest::addRow("cancel stops") << false;
}

void TestUploadTransaction::OfflineAsksForRetry() {
    QFETCH(bool, retry);
    CycleFixture f;
    f.Net.SetStopped(false);
    f.System.Online.Set(false);
    f.Boxes.Retry = retry;
    QVERIFY(!f.Transaction.ConnectFtp());
    QCOMPARE(f.Boxes.Shown, QStringList("Stillpost: No Connection to Internet possible!"));
    QCOMPARE(f.Transaction.Flags.QuietErrors, retry);
    QCOMPARE(f.Transaction.Flags.ConnectionDown, !retry);
    QCOMPARE(f.Display.Statuses.last() == "Offline", !retry);
    QCOMPARE(f.Server.Connections, 0);
}

void TestUploadTransaction::PublishOnTheWire_data() {
    QTest::addColumn<int>("history");
    QTest::addColumn<bool>("deletes");
    QTest::addColumn<int>("counter");
    QTest::addColumn<QString>("after");
    QTest::addRow("plain") << 0 << false << 0 << "";
    QTest::addRow("delete first") << 0 << true << 0 << "DELE pw.jpg|";
    QTest::addRow("history, tenth tick") << 2 << false << 9 << "";
    QTest::addRow("history, eleventh tick")
        << 2 << false << 10 << "DELE pw2.jpg|RNFR pw1.jpg|RNTO pw2.jpg|RNFR pw.jpg|RNTO pw1.jpg|";
    QTest::addRow("history of one, no delete in that tick")
        << 1 << true << 10 << "DELE pw1.jpg|RNFR pw.jpg|RNTO pw1.jpg|";
}

void TestUploadTransaction::PublishOnTheWire() {
    QFETCH(int, history);
    QFETCH(bool, deletes);
    QFETCH(int, counter);
    QFETCH(QString, after);
    CycleFixture f;
    f.State.Values.lastpictures = history > 0;
    f.State.Values.lastpictureanz = history;
    f.State.Values.Delete = deletes;
    f.Server.Files = {{"pw.jpg", "old"}, {"pw1.jpg", "older"}, {"pw2.jpg", "oldest"}};
    QVERIFY(f.Transaction.ConnectFtp());
    f.Transaction.SetHistoryCounter(counter);
    QFile file(f.State.WorkFile("1pw.jpg"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("new picture");
    file.close();
    QVERIFY(f.Transaction.Publish(file.fileName()));
    const QString expected = "TYPE I|PORT|STOR 1pw.jpg|" + after + "RNFR 1pw.jpg|RNTO pw.jpg";
    QCOMPARE(f.CommandsAfterLogin().join(u'|'), expected);
    QCOMPARE(f.Server.Files.value("pw.jpg"), QByteArray("new picture"));
    if (history > 0 && counter == 10) QCOMPARE(f.Server.Files.value("pw1.jpg"), "old");
    if (history == 2 && counter == 10) QCOMPARE(f.Server.Files.value("pw2.jpg"), "older");
}

void TestUploadTransaction::StepFaults_data() {
    QTest::addColumn<QList<FtpFault>>("script");
    QTest::addColumn<bool>("published");
    QTest::addRow("data connection open already")
        << QList<FtpFault>{{.Verb = "STOR", .Chunks = {"125 already open\r\n"}}} << true;
    QTest::addRow("226 behind 150 in one chunk")
        << QList<FtpFault>{{.Verb = "STOR", .Chunks = {"150 go\r\n226 done\r\n"}},
                           {.Verb = "DONE", .Silent = true}}
        << true;
    QTest::addRow("226 in two parts") << QList<FtpFault>{{.Verb = "DONE", .SplitAt = 2}} << true;
    QTest::addRow("226 forty seconds late")
        << QList<FtpFault>{{.Verb = "DONE", .DelayMilliseconds = 40'000}} << true;
    QTest::addRow("226 too late") << QList<FtpFault>{{.Verb = "DONE", .DelayMilliseconds = 46'000}}
                                  << false;
    QTest::addRow("226 never comes") << QList<FtpFault>{{.Verb = "DONE", .Silent = true}} << false;
    QTest::addRow("disk of the server full")
        << QList<FtpFault>{{.Verb = "DONE", .Chunks = {"552 disk full\r\n"}}} << false;
    QTest::addRow("STOR refused") << QList<FtpFault>{{.Verb = "STOR", .Chunks = {"553 no\r\n"}}}
                                  << false;
    QTest::addRow("nobody opens the data connection")
        << QList<FtpFault>{{.Verb = "STOR", .NoDataConnection = true}} << false;
    QTest::addRow("data connection cut")
        << QList<FtpFault>{{.Verb = "STOR", .DataBytes = 3}} << false;
    QTest::addRow("421 in the middle")
        << QList<FtpFault>{{.Verb = "STOR", .Chunks = {"421 bye\r\n"}, .CloseControl = true}}
        << false;
    QTest::addRow("rename refused")
        << QList<FtpFault>{{.Verb = "RNTO", .Chunks = {"550 no\r\n"}}} << false;
    QTest::addRow("nothing to rename")
        << QList<FtpFault>{{.Verb = "RNFR", .Chunks = {"550 no\r\n"}}} << false;
    QTest::addRow("rename without reply")
        << QList<FtpFault>{{.Verb = "RNTO", .Silent = true}} << false;
}

void TestUploadTransaction::StepFaults() {
    QFETCH(QList<FtpFault>, script);
    QFETCH(bool, published);
    CycleFixture f;
    f.Server.Files = {{"pw.jpg", "old"}};
    QVERIFY(f.Transaction.ConnectFtp());
    f.Server.Script = script;
    QFile file(f.State.WorkFile("1pw.jpg"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray picture(600'000, 'x');
    file.write(picture);
    file.close();
    QCOMPARE(f.Transaction.Publish(file.fileName()), published);
    QCOMPARE(f.Transaction.Flags.FtpError, !published);
    // A rename whose reply was lost or false has happened all the same.
    const bool replaced = published || script.first().Verb == "RNTO";
    QCOMPARE(f.Server.Files.value("pw.jpg"), replaced ? picture : QByteArray("old"));
    QVERIFY(!f.Display.LabelVisible);
}

void TestUploadTransaction::CountdownIsShownInTheLastThirtySeconds() {
    CycleFixture f;
    QVERIFY(f.Transaction.ConnectFtp());
    f.Server.Script = {{.Verb = "DONE", .Silent = true}};
    QFile file(f.State.WorkFile("1pw.jpg"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("picture");
    file.close();
    const qint64 start = f.Time.Milliseconds();
    f.Transaction.SendFile(file.fileName());
    QCOMPARE(f.Time.Milliseconds() - start, 45'000);
    QCOMPARE(f.Display.LabelSeconds.first(), 30);
    QCOMPARE(f.Display.LabelSeconds.last(), 0);
}

void TestUploadTransaction::LostConnectionEndsTheWait() {
    CycleFixture f;
    QVERIFY(f.Transaction.ConnectFtp());
    f.Server.Script = {{.Verb = "DELE", .Silent = true, .CloseControl = true}};
    const qint64 start = f.Time.Milliseconds();
    f.Transaction.DeletePublic();
    QVERIFY(f.Transaction.Flags.FtpError);
    QVERIFY2(f.Time.Milliseconds() - start < 2000, "no time limit had to pass");
}

void TestUploadTransaction::CloseRaisesConnectionDown() {
    CycleFixture f;
    QVERIFY(f.Transaction.ConnectFtp());
    f.Transaction.CloseConnection();
    QVERIFY(f.Time.RunUntil([&f] { return f.Server.OpenConnections == 0; }));
    const auto commands = f.Server.Commands.size();
    f.Transaction.DeletePublic();
    QCOMPARE(f.Server.Commands.size(), commands);
}

QTEST_GUILESS_MAIN(TestUploadTransaction)
#include "test_upload_transaction.moc"
