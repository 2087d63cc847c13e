#include "core/report/library_versions.h"

#include "net/sftp/ssh_command.h"
#include "platform/child_process.h"

#include <QProcess>
#include <QSslSocket>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/avutil.h>
}

namespace {

QString VersionText(unsigned version) {
    return QStringLiteral("%1.%2.%3")
        .arg(AV_VERSION_MAJOR(version))
        .arg(AV_VERSION_MINOR(version))
        .arg(AV_VERSION_MICRO(version));
}

}  // namespace

QStringList LibraryVersions() {
    const QString tls = QSslSocket::supportsSsl() ? QSslSocket::sslLibraryVersionString()
                                                  : QString("no encryption");
    return {"Qt " + QString::fromLatin1(qVersion()) + ", made with " QT_VERSION_STR,
            "FFmpeg " + QString::fromLatin1(av_version_info()) + ", libavcodec " +
                VersionText(avcodec_version()),
            "libjpeg-turbo " STILLPOST_TURBOJPEG_VERSION " (made with)", tls};
}

QStringList SshVersion() {
    constexpr int patience = 2'000;
    const SshProgram program = SshProgram::OfSystem();
    if (program.Path.isEmpty()) return {"ssh: none"};
    QProcess process;
    ChildProcess::KeepOffTerminal(process);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program.Path, {"-V"});
    if (process.waitForFinished(patience))
        return {QString::fromUtf8(process.readAll()).simplified() + ", " + program.Path};
    process.kill();
    process.waitForFinished(patience);
    return {program.Path + " does not tell its version"};
}
