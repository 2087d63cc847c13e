#include "net/sftp/ssh_command.h"

#include "net/sftp/host_keys.h"

#include <QMap>
#include <QStandardPaths>

namespace {

constexpr int usualPort = 22;

QStringList Options(std::initializer_list<QString> settings) {
    QStringList options;
    for (const QString& setting : settings) options << "-o" << setting;
    return options;
}

// Nothing but a session of one's own, which notices when the line is dead. Others' sessions may be
// used where the user has some.
QStringList Always() {
    return QStringList{"-a", "-x", "-T"} +
           Options({"ClearAllForwardings=yes", "PermitLocalCommand=no", "RemoteCommand=none",
                    "ControlMaster=no", "LogLevel=INFO", "ConnectTimeout=25",
                    "ConnectionAttempts=1", "ServerAliveInterval=15", "ServerAliveCountMax=2",
                    "NumberOfPasswordPrompts=1", "CheckHostIP=no", "UpdateHostKeys=no"});
}

// Both lists name the same file: neither the user's nor the system's is looked into.
QStringList OnlyOwnKeys() {
    return Options({"UserKnownHostsFile=" + HostKeys::FileName,
                    "GlobalKnownHostsFile=" + HostKeys::FileName, "VerifyHostKeyDNS=no",
                    "ControlPath=none"});
}

QStringList ByPurpose(const ServerAccess& access, SshCommand::Purpose purpose) {
    if (purpose == SshCommand::Purpose::ShowConfig) return {"-G"};
    if (purpose == SshCommand::Purpose::LearnKey)
        return OnlyOwnKeys() +
               Options({"StrictHostKeyChecking=accept-new", "PreferredAuthentications=none"});
    const bool pinned = HostKeys::IsFingerprint(access.Trusted);
    return (pinned ? OnlyOwnKeys() : QStringList()) + Options({"StrictHostKeyChecking=yes"}) +
           (access.Password.isEmpty() ? QStringList() : Options({"BatchMode=no"}));
}

}  // namespace

SshProgram SshProgram::OfSystem() {
    const QString name = QStringLiteral("ssh");
    const QString inPath = QStandardPaths::findExecutable(name);
    if (!inPath.isEmpty()) return {inPath, {}};
    // Where Windows has it, whatever the search path says.
    return {QStandardPaths::findExecutable(
                name, {qEnvironmentVariable("SystemRoot") + "/System32/OpenSSH"}),
            {}};
}

bool SshCommand::CanName(const QString& server) {
    return !server.isEmpty() && !server.startsWith(u'-');
}

QStringList SshCommand::Arguments(const ServerAccess& access, Purpose purpose) {
    QStringList arguments = ByPurpose(access, purpose) + Always();
    if (!access.KeyFile.isEmpty()) {
        // OpenSSH puts names in place of "%h" and the like.
        const QString path = QString(access.KeyFile).replace(u'%', QStringLiteral("%%"));
        arguments << "-i" << path << Options({"IdentitiesOnly=yes"});
    }
    if (!access.User.isEmpty()) arguments << "-l" << access.User;
    // The user's configuration may know another usual one.
    if (access.Port > 0 && access.Port != usualPort)
        arguments << "-p" << QString::number(access.Port);
    return arguments << "-s"
                     << "--" << access.Server << "sftp";
}

SshLogin SshLogin::Of(const QString& configuration) {
    QMap<QString, QString> values;
    const QStringList lines = configuration.split(u'\n');
    for (const QString& line : lines)
        values.insert(line.section(u' ', 0, 0), line.section(u' ', 1).trimmed());
    const QString user = values.value("user");
    const QString server = values.value("hostkeyalias", values.value("hostname"));
    const auto isSet = [&](const QString& key) {
        return values.contains(key) && values.value(key) != "none";
    };
    constexpr qsizetype longestUser = 30;
    constexpr qsizetype longestServer = 128;
    return {user + u'@' + server, user.left(longestUser) + u'@' + server.left(longestServer),
            !isSet("proxyjump") && !isSet("proxycommand")};
}
