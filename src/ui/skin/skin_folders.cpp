#include "ui/skin/skin_folders.h"

#include "base/paths.h"

#include <QDir>

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
