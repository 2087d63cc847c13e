#include "core/program_folder.h"

#include "base/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

// Tried, because permissions do not tell: read-only file systems, access lists, virtual folders.
bool CanCreateFiles(const QString& folder) {
    QTemporaryFile file(folder + "/.stillpost-XXXXXX");
    return QDir(folder).exists() && file.open();
}

}  // namespace

ProgramFolder::Places ProgramFolder::Places::OfThisProcess(const QString& requested) {
    return {requested, QCoreApplication::applicationDirPath(),
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)};
}

QString ProgramFolder::Usual(const Places& places) {
    return CanCreateFiles(places.ExecutableFolder) ? places.ExecutableFolder : places.UserFolder;
}

QStringList ProgramFolder::AutostartArguments(const QString& folder, const Places& places) {
    const QStringList start{"/autostarter"};
    if (QDir(Usual(places)) == QDir(folder)) return start;
    return QStringList{"--folder", folder} + start;
}

std::optional<ProgramFolder> ProgramFolder::Choose(const Places& places) {
    const QString folder = places.Requested.isEmpty() ? Usual(places) : places.Requested;
    if (folder.isEmpty() || !QDir().mkpath(folder)) return std::nullopt;
    const QString full = QDir::cleanPath(QDir(folder).absolutePath());
    return ProgramFolder{Paths::Native(full), Paths::Native(places.ExecutableFolder)};
}

QStringList ProgramFolder::ReadingFolders() const {
    return {Folder, ExecutableFolder, QDir::cleanPath(ExecutableFolder + "/../share/stillpost")};
}

QString ProgramFolder::FindShared(const QString& name) const {
    return Paths::Find(ReadingFolders(), name);
}
