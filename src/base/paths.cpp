#include "base/paths.h"

#include <QDir>

namespace Paths {

namespace {

QString Slashes(QString path) {
    return path.replace(u'\\', u'/');
}

QString FindEntry(const QString& folder, const QString& name) {
    const QDir dir(folder);
    const QStringList entries =
        dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    // Looked for in the list first: a system that takes every case finds any name, but the result
    // is spelt as the file is.
    if (entries.contains(name)) return dir.filePath(name);
    for (const QString& entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0) return dir.filePath(entry);
    // A folder may be closed to those who would list it.
    return dir.exists(name) ? dir.filePath(name) : QString();
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

QString Find(const QStringList& folders, const QString& name) {
    QString found;
    for (const QString& folder : folders)
        if (found.isEmpty() && !folder.isEmpty()) found = Find(folder, name);
    return found;
}

}  // namespace Paths
