#include "net/ftp_bench.h"
#include "net/trial_bench.h"
#include "support/data_rows.h"
#include "support/real_ftp_server.h"

#include <QDir>

using enum TrialResult;
using Kind = RealFtpServer::Kind;

namespace {
// The servers live in other processes: more quiet before the time moves on.
constexpr int Quiet = 100;
}  // namespace

// The client and the trial against the servers that are in use.
class TestFtpServers : public QObject {
    Q_OBJECT

  private:
    static QByteArray OnServer(const RealFtpServer& server, const QString& name) {
        return ReadBytes(server.Root() + name);
    }

    static void BothKinds() {
        const Rows<Kind> row;
        row("vsftpd", Kind::Vsftpd);
        row("pyftpdlib", Kind::Pyftpdlib);
    }

  private slots:
    void Transfers_data() { BothKinds(); }
    void Transfers() {
        const auto [kind] = Row<Kind>();
        RealFtpServer server(kind);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        FtpBench bench(server.Port(), Quiet);
        QVERIFY(bench.Client.Connect());
        for (const int size : {0, 1, 500, 700, 5000, 8196, 10000, 16392, 5'000'000}) {
            const QByteArray content = Content(size);
            QVERIFY2(bench.Client.PutFile({}, "1pw.jpg", bench.Local(content), false),
                     qPrintable(QString::number(size)));
            QVERIFY(bench.AwaitReply(226));
            QVERIFY(OnServer(server, "1pw.jpg") == content);
            QCOMPARE(bench.Get("1pw.jpg"), size > 0);
            if (size == 0) continue;
            QVERIFY(bench.AwaitReply(226));
            QVERIFY(bench.FetchedBytes() == content);
            QVERIFY(bench.Client.Rename({}, "1pw.jpg", "pw.jpg"));
        }
        QVERIFY(bench.Client.DirListing(bench.Fetched()));
        QVERIFY(bench.FetchedBytes().contains("5000000"));
        QVERIFY(bench.FetchedBytes().endsWith("pw.jpg\r\n"));
        QVERIFY(bench.AwaitReply(226));
        QVERIFY(bench.Client.KillFile({}, "pw.jpg"));
        QVERIFY(!bench.Client.KillFile({}, "pw.jpg"));
        QVERIFY(!QFile::exists(server.Root() + "pw.jpg"));
    }

    void UnderstandsSpecialCharacters_data() {
        const Rows<Kind, QString> row;
        row("vsftpd", Kind::Vsftpd, "cam");
        row("pyftpdlib", Kind::Pyftpdlib, "k@m:$!§ü x");
    }
    void UnderstandsSpecialCharacters() {
        const auto [kind, user] = Row<Kind, QString>();
        // A greeting of several lines comes in pieces.
        const QString banner = "Welcome.\n230 users are here.\n" + QString(100, u'x');
        const RealFtpServer::Options options{
            .User = user, .Password = " p$@:!§ü \"x\" ", .Banner = banner};
        RealFtpServer server(kind, options);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        const QString folder = QStringLiteral("a $@:!§ü b");
        const QString name = QStringLiteral("ü $@!§ 1.jpg");
        QVERIFY(QDir(server.Root()).mkdir(folder));
        QVERIFY(QFile::setPermissions(server.Root() + folder, QFile::Permissions(0x7777)));
        FtpBench bench(server.Port(), Quiet);
        bench.Client.SetUserName(options.User);
        bench.Client.SetPassword(options.Password);
        QVERIFY(bench.Client.Connect());
        QCOMPARE(bench.Errors.count(), 0);
        QVERIFY(bench.Client.PutFile(folder, name, bench.Local("xyz"), false));
        QVERIFY(bench.AwaitReply(226));
        QCOMPARE(OnServer(server, folder + u'/' + name), QByteArray("xyz"));
        QCOMPARE(bench.Client.GetRemoteFileSize({}, name), 3);
        QVERIFY(bench.Client.Rename({}, name, name + u'2'));
        QVERIFY(bench.Client.KillFile({}, name + u'2'));
        bench.Client.SetPassword(QStringLiteral("other"));
        bench.Client.Disconnect();
        QVERIFY(!bench.Client.Connect());
        QCOMPARE(bench.Client.GetLastErrorCode(), QStringLiteral("530"));
    }

    void NoticesWhenItWasIdleTooLong_data() { BothKinds(); }
    void NoticesWhenItWasIdleTooLong() {
        const auto [kind] = Row<Kind>();
        const RealFtpServer::Options options{.IdleSeconds = 1};
        RealFtpServer server(kind, options);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        FtpBench bench(server.Port(), Quiet);
        QVERIFY(bench.Client.Connect());
        QTRY_VERIFY(!bench.Client.IsConnected());
        QCOMPARE(bench.Client.ReplyCode(), 421);
        QVERIFY(!bench.Client.PutFile({}, "a", bench.Local("x"), false));
        QVERIFY(bench.Client.Connect());
        QVERIFY(bench.Client.PutFile({}, "a", bench.Local("x"), false));
    }

    void FindsSizesWithoutTheCommand() {
        const RealFtpServer::Options options{.KnowsSize = false};
        RealFtpServer server(Kind::Pyftpdlib, options);
        QVERIFY2(server.Start(), qPrintable(server.WhyNot()));
        FtpBench bench(server.Port(), Quiet);
        QVERIFY(bench.Client.Connect());
        for (const char* name : {"a", "pw.jpg", "pw.jpg2"}) {
            QVERIFY(bench.Client.PutFile({}, QString::fromLatin1(name),
                                         bench.Local(Content(qstrlen(name))), false));
            QVERIFY(bench.AwaitReply(226));
        }
        QCOMPARE(bench.Client.GetRemoteFileSize({}, "pw.jpg"), 6);
        QVERIFY(bench.AwaitReply(226));
        QCOMPARE(bench.Client.GetRemoteFileSize({}, "pw"), 0);
    }

    void ConnectionTrials_data() {
        const Rows<Kind, QString, QString, TrialResult> row;
        row("vsftpd", Kind::Vsftpd, "secret", "", Fine);
        row("vsftpd wrong password", Kind::Vsftpd, "other", "", LoginRefused);
        row("vsftpd read-only folder", Kind::Vsftpd, "secret", "closed", MayNotStore);
        row("pyftpdlib", Kind::Pyftpdlib, "secret", "", Fine);
        row("pyftpdlib wrong password", Kind::Pyftpdlib, "other", "", LoginRefused);
        row("pyftpdlib no folder", Kind::Pyftpdlib, "secret", "none", FolderMissing);
    }
    void ConnectionTrials() {
        const auto [kind, password, folder, result] = Row<Kind, QString, QString, TrialResult>();
        RealFtpServer server(kind);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        QVERIFY(QDir(server.Root()).mkdir("closed"));
        TrialBench bench(Quiet);
        TrialAccess access = TrialBench::To(server.Port());
        access.Password = password;
        access.Folder = folder;
        QCOMPARE(bench.Trial.Run(access).Is, result);
        QCOMPARE(QDir(server.Root()).entryList(QDir::Files), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestFtpServers)
#include "test_ftp_servers.moc"
