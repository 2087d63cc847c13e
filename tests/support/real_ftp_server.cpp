#include "support/real_ftp_server.h"

#include "support/file_bytes.h"
#include "support/test_certificates.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>

RealFtpServer::RealFtpServer(Kind kind, const QString& user, const QString& password,
                             const QString& tls) {
    process.setProcessChannelMode(QProcess::MergedChannels);
    // A process group of its own, so that its children end with it; and it ends with a test that
    // is killed.
    process.setChildProcessModifier([] {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                             QFile::ReadOther | QFile::ExeOther);
    QDir().mkpath(Root());
    static_cast<void>(chmod(qPrintable(Root()), 0777));
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    port = probe.serverPort();
    const QString name = kind == Kind::Vsftpd ? QString("vsftpd") : QString("pyftpdlib");
    process.setProgram(QStringLiteral(STILLPOST_FTP_SERVERS "/") + name + "-server");
    QStringList arguments{folder.path(), QString::number(port), user, password};
    if (!tls.isEmpty()) arguments << tls;
    process.setArguments(arguments);
    using namespace TestCertificates;
    static_cast<void>(WriteBytes(folder.filePath("server.pem"), QByteArray(Key) + Good));
}

RealFtpServer::~RealFtpServer() {
    if (process.state() == QProcess::NotRunning) return;
    kill(-static_cast<pid_t>(process.processId()), SIGKILL);
    process.waitForFinished(5000);
}

bool RealFtpServer::Start() {
    process.start();
    for (int attempt = 0; attempt < 500; ++attempt) {
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, port);
        if (probe.waitForConnected(1000)) return true;
        if (process.waitForFinished(20) || process.state() == QProcess::NotRunning) break;
    }
    whyNot = QString::fromUtf8(process.readAll());
    return false;
}
