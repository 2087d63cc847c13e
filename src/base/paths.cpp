#include "base/paths.h"

#include <QDir>
#include <QStringList>

namespace Paths {

namespace {

QString Slashes(QString path) {
    return path.replace(u'\\', u'/');
}

QString FindEntry(const QString& folder, const QString& name) {
    const QDir dir(folder);
    if (dir.exists(name)) return dir.filePath(name);
    const QStringList entries =
        dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0) return dir.filePath(entry);
    return {};
}

}  // namespace

QString Native(const QString& path) {
    return QDir::toNativeSeparators(Slashes(path));
}

QString WithSeparator(const QString& path) {
    if (path.isEmpty()) return path;
    const QString native = Native(path);
    return native.endsWith(QDir::separator()) ? native : native + QDir::separator();
}

QString Find(const QString& folder, const QString& name) {
    QString found = Slashes(folder);
    const QStringList steps = Slashes(name).split(u'/', Qt::SkipEmptyParts);
    if (steps.isEmpty()) return {};
    for (const QString& step : steps) {
        found = FindEntry(found, step);
        if (found.isEmpty()) return {};
    }
    return Native(found);
}

}  // namespace Paths
