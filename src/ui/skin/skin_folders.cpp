#include "ui/skin/skin_folders.h"

#include "base/paths.h"

#include <QDir>
#include <QFile>

namespace {
// Reading more would hold up the program.
constexpr qint64 mostBytes = 64 * 1024 * 1024;
}  // namespace

QStringList SkinFolders::Names() const {
    QStringList names;
    for (const QString& place : places) {
        const QString skins = Paths::Find(place, "Skins");
        if (skins.isEmpty()) continue;
        for (const QString& name : QDir(skins).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            if (!name.startsWith(u'.') && !names.contains(name, Qt::CaseInsensitive)) names << name;
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

QString SkinFolders::Folder(const QString& name) const {
    if (name.isEmpty()) return {};
    for (const QString& place : places) {
        const QString found = Paths::Find(place, "Skins/" + name);
        if (QFileInfo(found).isDir()) return found;
    }
    return {};
}

QString SkinFolders::Choose(const QString& wanted) const {
    const QString folder = Folder(wanted);
    return folder.isEmpty() ? Default : QFileInfo(folder).fileName();
}

QString SkinFolders::Find(const QString& name, const QString& file) const {
    return Paths::Find(places, "Skins/" + name + "/" + file);
}

std::optional<QByteArray> SkinFolders::Read(const QString& name, const QString& file) const {
    const QString path = Find(name, file);
    if (path.isEmpty()) return std::nullopt;
    const QFileInfo info(path);
    QFile open(path);
    // A pipe would keep the program waiting for its other end.
    const bool whole = info.isFile() && info.size() <= mostBytes && open.open(QIODevice::ReadOnly);
    return whole ? open.readAll() : QByteArray();
}
