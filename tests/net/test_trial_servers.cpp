#include "net/trial_bench.h"
#include "support/data_rows.h"
#include "support/real_ftp_server.h"

#include <QDir>

using enum TrialResult;
using Kind = RealFtpServer::Kind;

// The trial against the servers that are in use.
class TestTrialServers : public QObject {
    Q_OBJECT

  private slots:
    void RealServers_data() {
        const Rows<Kind, QString, QString, TrialResult> row;
        row("vsftpd", Kind::Vsftpd, "secret", "", Fine);
        row("vsftpd wrong password", Kind::Vsftpd, "other", "", LoginRefused);
        row("vsftpd read-only folder", Kind::Vsftpd, "secret", "closed", MayNotStore);
        row("pyftpdlib", Kind::Pyftpdlib, "secret", "", Fine);
        row("pyftpdlib wrong password", Kind::Pyftpdlib, "other", "", LoginRefused);
        row("pyftpdlib no folder", Kind::Pyftpdlib, "secret", "none", FolderMissing);
    }
    void RealServers() {
        const auto [kind, password, folder, result] = Row<Kind, QString, QString, TrialResult>();
        RealFtpServer server(kind);
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        QVERIFY(QDir(server.Root()).mkdir("closed"));
        TrialBench bench(100);
        TrialAccess access = TrialBench::To(server.Port());
        access.Password = password;
        access.Folder = folder;
        QCOMPARE(bench.Trial.Run(access).Is, result);
        QCOMPARE(QDir(server.Root()).entryList(QDir::Files), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestTrialServers)
#include "test_trial_servers.moc"
