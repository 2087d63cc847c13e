#include "core/settings/load_settings.h"

#include "base/paths.h"
#include "base/server_address.h"
#include "core/settings/work_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace {

// A drive of the other system, which no folder here can stand for.
bool HasDrive(const QString& path) {
    return path.size() > 1 && path[1] == u':';
}

QString NameOf(const QString& section, const QString& key) {
    return section + u'/' + key;
}

QString SettingFile(const QString& programFolder, const QString& written) {
    const QString file = Paths::Native(written);
    const bool full = file.isEmpty() || HasDrive(file) || QDir::isAbsolutePath(file);
    return full ? file : Paths::WithSeparator(programFolder) + file;
}

void TakeServerApart(Settings& settings) {
    const ServerAddress address = ServerAddress::Of(settings.Server);
    // What makes no sense shows when it is used.
    if (settings.LocalMode() || address.Is != ServerAddress::Fault::None) return;
    if (settings.Protocol.isEmpty()) settings.Protocol = address.Protocol;
    if (!address.Fits(settings.Protocol)) return;
    settings.Server = address.ServerFor(settings.Protocol);
    if (address.Port != 0) settings.Port = address.Port;
    if (settings.User.isEmpty()) settings.User = address.User;
    if (settings.PW.isEmpty()) settings.PW = address.Password;
    if (settings.Verzeichnis.isEmpty()) settings.Verzeichnis = address.Path;
}

}  // namespace

QString SettingsFileIn(const QString& programFolder) {
    return QDir(programFolder).filePath("ftpOptions.ini");
}

std::optional<Texts::Language> LanguageIn(const QString& file) {
    return Texts::Named(ReadSetting(file, "Einstellungen", "Sprache"));
}

QString SettingFolder(const QString& programFolder, const QString& written) {
    const QString folder = Paths::WithSeparator(written);
    if (folder.isEmpty() || folder.startsWith(QDir::separator()) || HasDrive(folder)) return folder;
    const QString full = Paths::WithSeparator(programFolder) + folder;
    (void)QDir().mkpath(full);
    return full;
}

Settings LoadSettings(const QString& programFolder, const SettingSource& source) {
    Settings settings;
    for (const SettingRow& row : SettingTable()) row.Read(source, settings);
    TakeServerApart(settings);
    if (settings.Server.isEmpty()) settings.Verzeichnis.clear();
    if (settings.LocalMode())
        settings.Verzeichnis = SettingFolder(programFolder, settings.Verzeichnis);
    settings.ArchivePath = SettingFolder(programFolder, settings.ArchivePath);
    settings.TextFile = SettingFile(programFolder, settings.TextFile);
    settings.WorkPath = SettingFolder(programFolder, settings.WorkPath);
    if (settings.WorkPath.isEmpty() || !QDir(settings.WorkPath).exists()) {
        settings.WorkPath = WorkFolder::Usual(programFolder);
        (void)QDir().mkpath(settings.WorkPath);
    }
    return settings;
}

Settings LoadSettings(const QString& file, const QList<ProfileEntry>& entries) {
    QHash<QString, QString> instead;
    for (const ProfileEntry& entry : entries)
        instead.insert(NameOf(entry.Section, entry.Key), entry.Value);
    const ProfileReader profile(file);
    return LoadSettings(QFileInfo(file).absolutePath(),
                        [&](const QString& section, const QString& key) {
                            const auto found = instead.constFind(NameOf(section, key));
                            return found != instead.cend() ? *found : profile.Value(section, key);
                        });
}
