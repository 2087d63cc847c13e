#include "platform/system_facts.h"

#include "platform/windows/system.h"

#include <mmsystem.h>
#include <psapi.h>

#include <QDir>
#include <QSettings>
#include <QThread>

namespace {

const QString runKey = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Run");
const QString cameraKey = QStringLiteral(
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\CapabilityAccessManager\\"
    "ConsentStore\\webcam");

QString Megabytes(quint64 bytes) {
    return QString::number(bytes / 1024 / 1024) + " MB";
}

QString AllowedIn(const QString& key) {
    return QSettings(key, QSettings::NativeFormat).value("Value", "not set").toString();
}

// Programs of a list of those that were let use the camera which have not left it yet.
QStringList UsersIn(const QString& key) {
    QSettings store(key, QSettings::NativeFormat);
    QStringList users;
    for (const QString& program : store.childGroups()) {
        const QVariant end = store.value(program + "/LastUsedTimeStop");
        if (end.isValid() && end.toLongLong() == 0) users << QString(program).replace(u'#', u'\\');
    }
    return users;
}

}  // namespace

QStringList SystemFacts::Processor() {
    const QSettings processor(
        "HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
        QSettings::NativeFormat);
    return {processor.value("ProcessorNameString").toString().trimmed() + ", " +
            QString::number(QThread::idealThreadCount()) + " cores"};
}

QStringList SystemFacts::Memory() {
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    GlobalMemoryStatusEx(&memory);
    PROCESS_MEMORY_COUNTERS own{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &own, sizeof own);
    return {Megabytes(memory.ullTotalPhys) + " memory, " + Megabytes(memory.ullAvailPhys) +
            " available; this program " + Megabytes(own.WorkingSetSize)};
}

QStringList SystemFacts::Graphics() {
    QStringList lines;
    DISPLAY_DEVICEW card{};
    card.cb = sizeof card;
    for (DWORD i = 0; EnumDisplayDevicesW(nullptr, i, &card, 0); ++i) {
        const QString name = QString::fromWCharArray(card.DeviceString);
        if (!lines.contains(name)) lines << name;
    }
    return lines;
}

QStringList SystemFacts::Sound() {
    QStringList lines;
    for (UINT i = 0; i < waveOutGetNumDevs(); ++i) {
        WAVEOUTCAPSW device{};
        if (waveOutGetDevCapsW(i, &device, sizeof device) == MMSYSERR_NOERROR)
            lines << QString::fromWCharArray(device.szPname);
    }
    return lines;
}

QStringList SystemFacts::Autostart(const QString& own) {
    const QString name = own.section(u'\\', -1);
    QStringList lines;
    for (const char* root : {"HKEY_CURRENT_USER\\", "HKEY_LOCAL_MACHINE\\"}) {
        const QString key = QString::fromLatin1(root) + runKey;
        const QSettings run(key, QSettings::NativeFormat);
        const QString command = run.value(name).toString();
        lines << key + ": " + run.childKeys().join(", ");
        if (!command.isEmpty()) lines << "  " + name + ": " + command;
    }
    return lines;
}

// The system tells no program who has opened a device; what it writes down for its page of privacy
// is all there is.
QStringList SystemFacts::CameraUsers() {
    QStringList lines{"privacy settings: camera " + AllowedIn(cameraKey) + ", desktop programs " +
                      AllowedIn(cameraKey + "\\NonPackaged")};
    const QStringList users = UsersIn(cameraKey) + UsersIn(cameraKey + "\\NonPackaged");
    lines << "in use, by Windows' record for privacy: " +
                 (users.isEmpty() ? QString("nobody") : users.join(", "));
    return lines << "drivers and services are not in that record";
}

QStringList SystemFacts::Drives() {
    QStringList paths;
    for (const QFileInfo& drive : QDir::drives()) paths << drive.filePath();
    return paths;
}
