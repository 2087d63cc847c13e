#include "net/ftp_bench.h"
#include "net/publishing/page_placing.h"
#include "net/trial_bench.h"
#include "support/data_rows.h"
#include "support/real_ftp_server.h"
#include "support/test_certificates.h"

#include <QDir>
#include <QSslCertificate>

using enum ServerAnswer::Fault;
using Kind = RealFtpServer::Kind;

// The client and the trial against the servers that are in use.
class TestFtpServers : public QObject {
    Q_OBJECT

  private slots:
    void Transfers_data() {
        const Rows<Kind, bool, QString, QString> row;
        row("vsftpd", Kind::Vsftpd, false, "", "cam");
        row("vsftpd, passive", Kind::Vsftpd, true, "", "cam");
        row("vsftpd, TLS 1.2", Kind::Vsftpd, false, "TLSv1.2", "cam");
        row("vsftpd, TLS 1.3", Kind::Vsftpd, false, "TLSv1.3", "cam");
        row("vsftpd, TLS 1.3, passive", Kind::Vsftpd, true, "TLSv1.3", "cam");
        row("pyftpdlib", Kind::Pyftpdlib, false, "", "k@m:$!§ü x");
        row("pyftpdlib, passive", Kind::Pyftpdlib, true, "", "cam");
        row("pyftpdlib, TLS 1.2, passive", Kind::Pyftpdlib, true, "TLSv1.2", "cam");
        row("pyftpdlib, TLS 1.3", Kind::Pyftpdlib, false, "TLSv1.3", "cam");
    }
    void Transfers() {
        const auto [kind, passive, tls, user] = Row<Kind, bool, QString, QString>();
        const QString password = " p$@:!§ü \"x\" ";
        const QString folder = "a $@:!§ü b";
        const QString name = "ü $@!§ 1.jpg";
        RealFtpServer server(kind, user, password, tls);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        QVERIFY(QDir(server.Root()).mkdir(folder));
        QVERIFY(QFile::setPermissions(server.Root() + folder, QFile::Permissions(0x7777)));
        FtpBench bench(server.Port(), TestClock::Patient);
        bench.Client.SetPassive(passive);
        if (!tls.isEmpty()) bench.Trust(TestCertificates::Good);
        bench.Client.SetUserName(user);
        bench.Client.SetPassword(password);
        QVERIFY(bench.Client.Connect());
        QVERIFY(bench.Client.PutFile(folder, "first", bench.Local({}), false));
        QVERIFY(bench.AwaitReply(226));
        // In this folder from now on.
        for (const int size : {1, 8196, 5'000'000}) {
            const QByteArray content = Content(size);
            QVERIFY(bench.Client.PutFile({}, name, bench.Local(content), false));
            QVERIFY(bench.AwaitReply(226));
            QVERIFY(ReadBytes(server.Root() + folder + u'/' + name) == content);
            QCOMPARE(bench.Client.GetRemoteFileSize({}, name), size);
            QVERIFY(bench.Get(name));
            QVERIFY(bench.AwaitReply(226));
            QVERIFY(bench.FetchedBytes() == content);
            QVERIFY(bench.Client.Rename({}, name, "pw.jpg"));
        }
        QVERIFY(bench.Client.DirListing(bench.Fetched()));
        QVERIFY(bench.FetchedBytes().contains("5000000"));
        QVERIFY(bench.FetchedBytes().endsWith("pw.jpg\r\n"));
        QVERIFY(bench.AwaitReply(226));
        QVERIFY(bench.Client.KillFile({}, "pw.jpg"));
        QVERIFY(!bench.Client.KillFile({}, "pw.jpg"));
        QCOMPARE(QDir(server.Root() + folder).entryList(QDir::Files), QStringList("first"));
    }

    void Pages_data() {
        const Rows<Kind, bool, QString> row;
        row("vsftpd", Kind::Vsftpd, false, "");
        row("vsftpd, TLS 1.3, passive", Kind::Vsftpd, true, "TLSv1.3");
        row("pyftpdlib, passive", Kind::Pyftpdlib, true, "");
        row("pyftpdlib, TLS 1.2", Kind::Pyftpdlib, false, "TLSv1.2");
    }
    void Pages() {
        const auto [kind, passive, tls] = Row<Kind, bool, QString>();
        RealFtpServer server(kind, "cam", "secret", tls);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        TrialBench bench(TestClock::Patient);
        ServerAccess access = TrialBench::To(server.Port());
        access.Passive = passive;
        access.Way = tls.isEmpty() ? Protocol::Ftp : Protocol::Ftps;
        access.Trusted = Certificates::Fingerprint(QSslCertificate(TestCertificates::Good));
        PagePlacing placing(bench.Wait, bench.Log);
        QList<PageThere> asked;
        const auto put = [&](const QByteArray& html) {
            return placing.Run(access, {"our cam.html", html, ""}, [&asked](PageThere there) {
                asked << there;
                return true;
            });
        };
        const QByteArray ours = "<meta name=\"generator\" content=\"Stillpost web page\">";
        for (const QByteArray& html : {ours + '1', ours + '2', QByteArray("mine"), ours + '3'}) {
            QCOMPARE(put(html), ServerAnswer());
            QVERIFY(ReadBytes(server.Root() + "our cam.html") == html);
        }
        QCOMPARE(asked, QList{PageThere::Another});
        QCOMPARE(QDir(server.Root()).entryList(QDir::Files), QStringList("our cam.html"));
    }

    void ConnectionTrials_data() {
        const Rows<Kind, QString, QString, ServerFault> row;
        row("vsftpd", Kind::Vsftpd, "secret", "", None);
        row("vsftpd read-only folder", Kind::Vsftpd, "secret", "closed", MayNotStore);
        row("pyftpdlib wrong password", Kind::Pyftpdlib, "other", "", LoginRefused);
        row("pyftpdlib no folder", Kind::Pyftpdlib, "secret", "none", FolderMissing);
    }
    void ConnectionTrials() {
        const auto [kind, password, folder, result] = Row<Kind, QString, QString, ServerFault>();
        RealFtpServer server(kind);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        QVERIFY(QDir(server.Root()).mkdir("closed"));
        TrialBench bench(TestClock::Patient);
        ServerAccess access = TrialBench::To(server.Port());
        access.Password = password;
        access.Folder = folder;
        QCOMPARE(bench.Trial.Run(access).Answer.Is, result);
        QCOMPARE(QDir(server.Root()).entryList(QDir::Files), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestFtpServers)
#include "test_ftp_servers.moc"
