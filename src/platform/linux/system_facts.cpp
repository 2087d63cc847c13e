#include "platform/linux/system_facts.h"

#include "platform/system_facts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>

namespace {

QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The values of lines "name   : value", each of them once.
QStringList ValuesIn(const QString& path, const QStringList& names) {
    QStringList values;
    for (const QByteArray& line : Read(path).split('\n')) {
        const QString text = QString::fromUtf8(line);
        const QString value = text.section(u':', 1).simplified();
        if (names.contains(text.section(u':', 0, 0).trimmed()) && !values.contains(value))
            values << value;
    }
    return values;
}

QString Megabytes(const QString& path, const QString& name) {
    const QString kilobytes = ValuesIn(path, {name}).value(0).section(u' ', 0, 0);
    return QString::number(kilobytes.toLongLong() / 1024) + " MB";
}

QStringList NamesIn(const QString& folder, const QString& pattern) {
    return QDir(folder).entryList({pattern}, QDir::Files | QDir::System);
}

// In paths of the list a blank and the like stand as "\040".
QString Unescaped(const QByteArray& path) {
    QByteArray plain;
    for (qsizetype i = 0; i < path.size(); ++i) {
        bool octal = false;
        const int code = path[i] == '\\' ? path.mid(i + 1, 3).toInt(&octal, 8) : 0;
        plain += octal ? static_cast<char>(code) : path[i];
        if (octal) i += 3;
    }
    return QFile::decodeName(plain);
}

bool HasFilesOfItsOwn(const QByteArray& device, const QByteArray& type) {
    static const QByteArrayList types{"btrfs", "cifs", "nfs", "nfs4", "smb3", "zfs", "9p"};
    const bool disk = device.startsWith("/dev/") && !device.startsWith("/dev/loop");
    return disk || types.contains(type) || type.startsWith("fuse.");
}

}  // namespace

QStringList LinuxFacts::DrivesIn(const QByteArray& mounts) {
    QStringList paths{"/"};
    for (const QByteArray& line : mounts.split('\n')) {
        const QByteArrayList words = line.split(' ');
        if (words.size() < 3 || !HasFilesOfItsOwn(words[0], words[2])) continue;
        const QString path = Unescaped(words[1]);
        // Single files are lent to containers.
        if (!paths.contains(path) && !path.startsWith("/etc/")) paths << path;
    }
    return paths;
}

QStringList LinuxFacts::CameraUsersIn(const QString& processes) {
    QStringList lines;
    int closed = 0;
    for (const QString& id : QDir(processes).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString own = processes + u'/' + id;
        if (!std::ranges::all_of(id, [](QChar each) { return each.isDigit(); })) continue;
        if (!QFileInfo(own + "/fd").isReadable()) ++closed;
        QStringList cameras;
        for (const QFileInfo& each : QDir(own + "/fd").entryInfoList(QDir::Files | QDir::System)) {
            const QString camera = each.symLinkTarget();
            if (camera.startsWith("/dev/video") && !cameras.contains(camera)) cameras << camera;
        }
        if (!cameras.isEmpty())
            lines << QString::fromUtf8(Read(own + "/comm")).trimmed() + " (" + id +
                         "): " + cameras.join(", ");
    }
    if (closed > 0) lines << QStringLiteral("%1 processes of other users do not tell").arg(closed);
    return lines;
}

QStringList SystemFacts::Processor() {
    const QStringList models = ValuesIn("/proc/cpuinfo", {"model name", "Model", "Hardware"});
    const QString cores = QString::number(QThread::idealThreadCount()) + " cores";
    return {(models + QStringList{cores}).join(", ")};
}

QStringList SystemFacts::Memory() {
    const QString all = "/proc/meminfo";
    return {Megabytes(all, "MemTotal") + " memory, " + Megabytes(all, "MemAvailable") +
            " available; swap " + Megabytes(all, "SwapTotal") + ", " + Megabytes(all, "SwapFree") +
            " free; this program " + Megabytes("/proc/self/status", "VmRSS")};
}

QStringList SystemFacts::Graphics() {
    QStringList lines;
    const QString cards = "/sys/class/drm";
    for (const QString& card : QDir(cards).entryList({"card?"})) {
        QStringList facts{card};
        for (const QByteArray& line : Read(cards + u'/' + card + "/device/uevent").split('\n'))
            if (line.startsWith("DRIVER=") || line.startsWith("PCI_ID="))
                facts << QString::fromUtf8(line);
        lines << facts.join(' ');
    }
    lines << "session: " + qEnvironmentVariable("XDG_SESSION_TYPE", "-") +
                 ", desktop: " + qEnvironmentVariable("XDG_CURRENT_DESKTOP", "-");
    return lines;
}

QStringList SystemFacts::Sound() {
    QStringList lines;
    for (const QByteArray& line : Read("/proc/asound/cards").split('\n'))
        if (!line.trimmed().isEmpty()) lines << QString::fromUtf8(line).simplified();
    for (const QString& player : QStringList{"pw-play", "paplay", "aplay"}) {
        const QString program = QStandardPaths::findExecutable(player);
        if (!program.isEmpty()) return lines << "clicks by " + program;
    }
    return lines << "no player (pw-play, paplay, aplay)";
}

QStringList SystemFacts::Autostart(const QString& own) {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    QStringList lines{own + (QFile::exists(own) ? QString() : ": none")};
    for (const QByteArray& line : Read(own).split('\n'))
        if (line.startsWith("Exec=")) lines << "  " + QString::fromUtf8(line);
    for (const QString& folder : {config + "/autostart", QString("/etc/xdg/autostart"),
                                  config + "/systemd/user/default.target.wants"}) {
        const QStringList names = NamesIn(folder, "*");
        if (!names.isEmpty()) lines << folder + ": " + names.join(", ");
    }
    return lines;
}

QStringList SystemFacts::CameraUsers() {
    return LinuxFacts::CameraUsersIn("/proc");
}

QStringList SystemFacts::Drives() {
    return LinuxFacts::DrivesIn(Read("/proc/self/mounts"));
}
