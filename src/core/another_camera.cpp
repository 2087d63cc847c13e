#include "core/another_camera.h"

#include "base/paths.h"
#include "base/profile_file.h"
#include "core/settings/load_settings.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString camerasFolder = QStringLiteral("cameras");
const QString section = QStringLiteral("Einstellungen");
constexpr int mostFolders = 1000;
constexpr qsizetype longestName = 60;
constexpr int besideFirst = 40;  // pixels

// Beside those that were made from here, wherever the program was started.
QDir PlaceFor(const QString& programFolder) {
    const QDir own(programFolder);
    QDir above(own.filePath(QStringLiteral("..")));
    above.setPath(QDir::cleanPath(above.absolutePath()));
    return above.dirName() == camerasFolder ? above : QDir(own.filePath(camerasFolder));
}

// The first free one: "garden", "garden-2" …; nothing when none can be made.
std::optional<QDir> NewFolder(const QDir& place, const QString& name) {
    if (!QDir().mkpath(place.absolutePath())) return std::nullopt;
    for (int i = 1; i <= mostFolders; ++i) {
        const QString folder = i == 1 ? name : name + u'-' + QString::number(i);
        // False where there is one already.
        if (place.mkdir(folder)) return QDir(place.filePath(folder));
        if (!place.exists(folder)) break;
    }
    return std::nullopt;
}

QString Below(const QString& folder, const QString& name) {
    return folder.isEmpty() || folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

// Under the same names in the same folder one program would publish over the other's pictures.
QString PublicFolder(const QString& file, const QString& name) {
    const Settings settings = LoadSettings(file);
    const QString written = ReadSetting(file, section, "Verzeichnis");
    if (!settings.LocalMode()) return Below(settings.Verzeichnis, name);
    // A relative one is below each program's own folder.
    return QDir::isRelativePath(written) ? written : Below(written, name);
}

QList<ProfileEntry> EntriesFor(const QString& file, const QString& name, const QDir& folder) {
    QList<ProfileEntry> entries{{section, "Name", name}};
    // Each as it is where it has not been set.
    for (const char* key : {"Treiber", "CaptureFormat", "Path", "Autostart"})
        if (const QString each = QString::fromLatin1(key);
            !ReadSetting(file, section, each).isEmpty())
            entries << ProfileEntry{section, each, {}};
    // Not in the very place of the first one's.
    for (const char* key : {"WindowLeft", "WindowTop", "StatusLeft", "StatusTop"})
        if (const QString place = ReadSetting(file, "Window", QString::fromLatin1(key));
            !place.isEmpty())
            entries << ProfileEntry{"Window", QString::fromLatin1(key),
                                    QString::number(ValLong(place) + besideFirst)};
    const QString archive = ReadSetting(file, section, "ArchivePath");
    if (!archive.isEmpty() && !QDir::isRelativePath(archive))
        entries << ProfileEntry{section, "ArchivePath", "archive"};
    if (!ReadSetting(file, section, "Server").isEmpty())
        entries << ProfileEntry{section, "Verzeichnis", PublicFolder(file, folder.dirName())};
    return entries;
}

void CopyFile(const QDir& from, const QDir& to, const QString& name) {
    const QString source = from.filePath(name);
    if (name.endsWith(u'/') || !QFileInfo(source).isFile()) return;
    QDir().mkpath(QFileInfo(to.filePath(name)).path());
    QFile::copy(source, to.filePath(name));
}

void CopyPictures(const QString& file, const QDir& from, const QDir& to) {
    const Settings settings = LoadSettings(file);
    CopyFile(from, to, "Offline/" + settings.Offlinefile);
    CopyFile(from, to, "overlay/" + settings.Overlayfile);
    for (const QString& each : settings.PictureList) CopyFile(from, to, "overlay/" + each);
}

}  // namespace

QString AnotherCamera::FolderName(const QString& name) {
    QString folder;
    for (const QChar each : name.simplified().left(longestName)) {
        const bool plain = each.isLetterOrNumber() || each == u'_';
        if (plain)
            folder += each;
        else if (!folder.isEmpty() && !folder.endsWith(u'-'))
            folder += u'-';
    }
    while (folder.endsWith(u'-')) folder.chop(1);
    // Names of devices on Windows.
    static const QStringList devices{"con", "prn", "aux", "nul"};
    const QString low = folder.toLower();
    const bool numbered =
        low.size() == 4 && (low.startsWith("com") || low.startsWith("lpt")) && low.back().isDigit();
    if (devices.contains(low) || numbered) folder += "-camera";
    return folder.isEmpty() ? QStringLiteral("camera") : folder;
}

std::optional<QString> AnotherCamera::Make(const QString& programFolder, const QString& name) {
    const QDir own(programFolder);
    const auto folder = NewFolder(PlaceFor(programFolder), FolderName(name));
    if (!folder) return std::nullopt;
    const QString from = SettingsFileIn(programFolder);
    const QString to = SettingsFileIn(folder->path());
    const bool copied = !QFileInfo::exists(from) || QFile::copy(from, to);
    if (!copied || WriteSettings(to, EntriesFor(from, name, *folder)) == 0) {
        QDir(*folder).removeRecursively();
        return std::nullopt;
    }
    CopyPictures(from, own, *folder);
    CopyFile(own, *folder, "known_hosts");
    return Paths::Native(folder->absolutePath());
}
