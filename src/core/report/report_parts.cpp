#include "core/report/report_parts.h"

#include "core/log/log_file.h"
#include "core/report/library_versions.h"
#include "core/report/report_secrets.h"
#include "core/settings/load_settings.h"
#include "core/version.h"
#include "platform/platform.h"
#include "platform/system_facts.h"
#include "texts/texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QNetworkInterface>
#include <QScreen>
#include <QStorageInfo>
#include <QSysInfo>
#include <QTimeZone>

#include <algorithm>
#include <memory>

namespace {

constexpr int logLines = 200;

QString SizeText(qint64 bytes) {
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QStringList ProgramLines(const QString& folder) {
    const QByteArray zone = QTimeZone::systemTimeZoneId();
    return QStringList{"Stillpost " + ProgramVersion() + ", " + QSysInfo::buildAbi(),
                       "program: " + QCoreApplication::applicationFilePath(),
                       "program folder: " + folder,
                       "language of the system: " + QLocale::system().name() +
                           ", time zone: " + QString::fromLatin1(zone)} +
           LibraryVersions();
}

QStringList SystemLines() {
    return QStringList{QSysInfo::prettyProductName() + ", " + QSysInfo::kernelType() + ' ' +
                       QSysInfo::kernelVersion() + ", " + QSysInfo::currentCpuArchitecture()} +
           SystemFacts::Processor() + SystemFacts::Memory();
}

// As Qt sees them.
QStringList ScreenLines() {
    const QString platform = QGuiApplication::platformName();
    QStringList lines{"windows by: " + platform};
    if (platform == u"offscreen" || platform == u"minimal") return lines << "without a display";
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        lines << QStringLiteral("%1: %2 x %3 at %4, %5, scale %6, %7 dpi, %8 Hz")
                     .arg(screen->name())
                     .arg(area.width())
                     .arg(area.height())
                     .arg(area.x())
                     .arg(area.y())
                     .arg(screen->devicePixelRatio())
                     .arg(screen->logicalDotsPerInch())
                     .arg(screen->refreshRate(), 0, 'f', 0);
    }
    return lines;
}

QString FormatLine(const CaptureFormat& format) {
    QStringList rates;
    for (const double rate : format.Rates) rates << QString::number(rate, 'g', 4);
    return QStringLiteral("  %1x%2 %3 ")
               .arg(format.Width)
               .arg(format.Height)
               .arg(format.PixelFormat) +
           rates.join(u' ');
}

ReportAnswer CameraAnswer(const std::shared_ptr<const CaptureDevices>& cameras) {
    ReportAnswer answer;
    for (const CaptureDevice& device : cameras->List())
        answer.Further << ReportPart{
            device.Name, [cameras, device] {
                ReportAnswer formats{{device.Name + ", " + device.Connection}};
                for (const CaptureFormat& format : cameras->Formats(device))
                    formats.Lines << FormatLine(format);
                if (formats.Lines.size() == 1) formats.Lines << "  tells no formats now";
                return formats;
            }};
    return answer;
}

QStringList DriveLines(const QString& path) {
    const QStorageInfo drive(path);
    if (!drive.isValid() || !drive.isReady()) return {path + ": not ready"};
    return {QStringLiteral("%1: %2, %3, %4 free%5")
                .arg(path, QString::fromUtf8(drive.fileSystemType()), SizeText(drive.bytesTotal()),
                     SizeText(drive.bytesAvailable()),
                     drive.isReadOnly() ? QString(", read-only") : QString())};
}

ReportAnswer DriveAnswer() {
    ReportAnswer answer;
    for (const QString& path : SystemFacts::Drives())
        answer.Further << ReportPart{path, [path] { return ReportAnswer{DriveLines(path)}; }};
    return answer;
}

// The addresses themselves are nobody's business.
QString KindOf(const QHostAddress& address) {
    const QString version =
        address.protocol() == QAbstractSocket::IPv6Protocol ? QString("IPv6") : "IPv4";
    if (address.isLoopback()) return version + " of this machine";
    if (address.isLinkLocal()) return version + " of the link";
    static const QStringList local{"10.0.0.0/8", "172.16.0.0/12", "192.168.0.0/16", "fc00::/7"};
    const bool inside = std::ranges::any_of(local, [&address](const QString& subnet) {
        return address.isInSubnet(QHostAddress::parseSubnet(subnet));
    });
    return version + (inside ? QString(" of the local network") : " of the internet");
}

QStringList InterfaceLines() {
    QStringList lines;
    for (const QNetworkInterface& each : QNetworkInterface::allInterfaces()) {
        QStringList facts;
        const bool up =
            each.flags().testFlags(QNetworkInterface::IsUp | QNetworkInterface::IsRunning);
        facts << (up ? QString("up") : "down");
        for (const QNetworkAddressEntry& entry : each.addressEntries()) facts << KindOf(entry.ip());
        lines << each.humanReadableName() + ": " + facts.join(", ");
    }
    return lines;
}

// Asked on the user-interface thread; it is kept ready.
QString OnlineLine(const OnlineState& online) {
    const auto links = online.Connection();
    QStringList kinds;
    if (links.testFlag(OnlineState::Modem)) kinds << "modem";
    if (links.testFlag(OnlineState::Lan)) kinds << "network";
    if (links.testFlag(OnlineState::Proxy)) kinds << "proxy";
    const QString state = online.Connected()   ? QString("online")
                          : online.Reachable() ? QString("a network without a way out")
                                               : QString("offline");
    return kinds.isEmpty() ? state : state + ", " + kinds.join(", ");
}

QByteArray SettingsIn(const QString& folder) {
    QFile file(SettingsFileIn(folder));
    return file.open(QIODevice::ReadOnly) ? file.read(LargestSettingsFile) : QByteArray();
}

QStringList LogLines(const QString& folder) {
    const ReportSecrets secrets(SettingsIn(folder));
    QStringList lines;
    for (const QString& line : LogFile::Last(folder, logLines)) lines << secrets.Without(line);
    return lines;
}

ReportPart Simple(const QString& name, const std::function<QStringList()>& lines) {
    return {name, [lines] { return ReportAnswer{lines()}; }};
}

}  // namespace

QList<ReportPart> ReportParts(const ReportSources& sources) {
    const auto name = [&](const QString& key) { return sources.Words.Get("Report", key); };
    const QString folder = sources.Folder;
    const std::shared_ptr<const CaptureDevices> cameras = sources.System.Cameras;
    const QStringList screens = ScreenLines();
    const QString online = OnlineLine(*sources.System.Online);
    const QString autostart = sources.System.Autostart->Place();
    const auto versions = [folder] {
        return ReportAnswer{ProgramLines(folder), {Simple("ssh", [] { return SshVersion(); })}};
    };
    return {{name("Program"), versions},
            Simple(name("System"), SystemLines),
            Simple(name("Graphics"), SystemFacts::Graphics),
            Simple(name("Screens"), [screens] { return screens; }),
            Simple(name("Sound"), SystemFacts::Sound),
            {name("Cameras"), [cameras] { return CameraAnswer(cameras); }},
            Simple(name("CameraUsers"), SystemFacts::CameraUsers),
            {name("Drives"), DriveAnswer},
            Simple(name("Network"), [online] { return QStringList{online} + InterfaceLines(); }),
            Simple(name("Autostart"), [autostart] { return SystemFacts::Autostart(autostart); }),
            Simple(name("Settings"),
                   [folder] { return ReportSecrets::SettingsOf(SettingsIn(folder)); }),
            Simple(name("Log"), [folder] { return LogLines(folder); })};
}
