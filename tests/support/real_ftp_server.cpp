#include "support/real_ftp_server.h"

#include "support/file_bytes.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>

namespace {

// The owner of the files: nobody in particular.
constexpr int UserId = 65534;

// The real configuration files are hidden behind ours in a mount namespace of its own; nothing of
// the system changes.
const char* const VsftpdLauncher = R"(set -e
mount --bind "$1/passwd" /etc/passwd
mount --bind "$1/shadow" /etc/shadow
mount --bind "$1/pam" /etc/pam.d/vsftpd
exec vsftpd "$1/vsftpd.conf"
)";

const char* const PyftpdlibServer = R"(import sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer
port, root, user, password, idle, size, banner = sys.argv[1:]
class Handler(FTPHandler):
    authorizer = DummyAuthorizer()
    timeout = int(idle)
    auth_failed_timeout = 0
    proto_cmds = {k: v for k, v in FTPHandler.proto_cmds.items() if size == '1' or k != 'SIZE'}
Handler.authorizer.add_user(user, password, root, perm='elradfmwMT')
if banner:
    Handler.banner = banner
FTPServer(('127.0.0.1', int(port)), Handler).serve_forever(timeout=0.2)
)";

quint16 FreePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

QString Hashed(const QString& password) {
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"), {"passwd", "-6", "-stdin"});
    openssl.write(password.toUtf8() + '\n');
    openssl.closeWriteChannel();
    openssl.waitForFinished();
    return QString::fromUtf8(openssl.readAll()).trimmed();
}

}  // namespace

RealFtpServer::RealFtpServer(Kind which, const Options& wanted) : kind(which), options(wanted) {
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
}

RealFtpServer::~RealFtpServer() {
    if (process.state() == QProcess::NotRunning) return;
    kill(-static_cast<pid_t>(process.processId()), SIGKILL);
    process.waitForFinished(5000);
}

bool RealFtpServer::Start() {
    port = FreePort();
    return kind == Kind::Vsftpd ? StartVsftpd() : StartPyftpdlib();
}

QString RealFtpServer::WriteFile(const QString& name, const QString& content, bool secret) {
    const QString path = folder.filePath(name);
    if (!WriteBytes(path, content.toUtf8())) return {};
    const QFile::Permissions everybody = QFile::ReadGroup | QFile::ReadOther;
    QFile::setPermissions(
        path, QFile::ReadOwner | QFile::WriteOwner | (secret ? QFile::Permissions() : everybody));
    return path;
}

QString RealFtpServer::VsftpdSettings() {
    QStringList lines{
        "listen=YES\nbackground=NO\nlisten_address=127.0.0.1\nlocal_enable=YES\n"
        "anonymous_enable=NO\nwrite_enable=YES\ncheck_shell=NO\nseccomp_sandbox=NO\n"
        "isolate=NO\nisolate_network=NO\nxferlog_enable=NO\npam_service_name=vsftpd\n"
        "local_umask=022",
        QStringLiteral("listen_port=%1").arg(port),
        QStringLiteral("local_root=%1").arg(Root()),
        QStringLiteral("secure_chroot_dir=%1").arg(folder.filePath(QStringLiteral("empty"))),
        QStringLiteral("idle_session_timeout=%1").arg(options.IdleSeconds),
    };
    if (!options.Banner.isEmpty())
        lines << QStringLiteral("banner_file=") +
                     WriteFile(QStringLiteral("banner"), options.Banner + u'\n');
    return lines.join(u'\n') + u'\n';
}

bool RealFtpServer::StartVsftpd() {
    if (geteuid() != 0) {
        whyNot = QStringLiteral("vsftpd changes its user at login and so needs root");
        return false;
    }
    QDir(folder.path()).mkdir(QStringLiteral("empty"));
    WriteFile(QStringLiteral("vsftpd.conf"), VsftpdSettings());
    WriteFile(QStringLiteral("passwd"),
              QStringLiteral("root:x:0:0::/root:/bin/sh\nnobody:x:%1:%1::/:/bin/sh\n"
                             "ftp:x:%1:%1::/:/bin/sh\n%2:x:%1:%1::%3:/bin/sh\n")
                  .arg(UserId)
                  .arg(options.User, Root()));
    WriteFile(
        QStringLiteral("shadow"),
        QStringLiteral("%1:%2:19000:0:99999:7:::\n").arg(options.User, Hashed(options.Password)),
        true);
    WriteFile(QStringLiteral("pam"),
              QStringLiteral("auth required pam_unix.so nodelay\naccount required pam_unix.so\n"
                             "session required pam_permit.so\n"));
    return Launch(QStringLiteral("unshare"),
                  {"-m", "sh", "-c", QString::fromLatin1(VsftpdLauncher), "sh", folder.path()});
}

bool RealFtpServer::StartPyftpdlib() {
    const QString script =
        WriteFile(QStringLiteral("server.py"), QString::fromLatin1(PyftpdlibServer));
    return Launch(
        QStringLiteral("/usr/bin/python3"),
        {script, QString::number(port), Root(), options.User, options.Password,
         QString::number(options.IdleSeconds), options.KnowsSize ? "1" : "0", options.Banner});
}

bool RealFtpServer::Launch(const QString& program, const QStringList& arguments) {
    process.start(program, arguments);
    if (!process.waitForStarted()) {
        whyNot = program + QStringLiteral(": ") + process.errorString();
        return false;
    }
    for (int attempt = 0; attempt < 500; ++attempt) {
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, port);
        if (probe.waitForConnected(1000)) return true;
        if (process.waitForFinished(20)) break;
    }
    whyNot = program + QStringLiteral(" does not serve: ") + QString::fromUtf8(process.readAll());
    return false;
}
