#include "ui/settings/ftp/offline_list.h"

#include "base/paths.h"
#include "picture/bitmap/picture_file.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

QList<OfflineEntry> OfflinePictures(const QStringList& places) {
    QList<OfflineEntry> found;
    const auto known = [&found](const QString& name) {
        return std::any_of(found.begin(), found.end(), [&name](const OfflineEntry& entry) {
            return entry.Name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    for (const QString& place : places) {
        const QString folder = Paths::Find(place, "Offline");
        if (folder.isEmpty()) continue;
        for (const QFileInfo& file : QDir(folder).entryInfoList(PictureKinds(), QDir::Files))
            if (!known(file.fileName())) found << OfflineEntry{file.fileName(), file.filePath()};
    }
    std::sort(found.begin(), found.end(), [](const OfflineEntry& one, const OfflineEntry& other) {
        return one.Name.compare(other.Name, Qt::CaseInsensitive) < 0;
    });
    return found;
}

QString FreeName(const QString& name, const QStringList& taken) {
    const QFileInfo wanted(name);
    QString free = name;
    for (int number = 2; taken.contains(free, Qt::CaseInsensitive); ++number)
        free = QStringLiteral("%1 (%2).%3")
                   .arg(wanted.completeBaseName(), QString::number(number), wanted.suffix());
    return free;
}
