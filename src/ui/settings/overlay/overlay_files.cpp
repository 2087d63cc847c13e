#include "ui/settings/overlay/overlay_files.h"

#include "base/paths.h"
#include "base/whole_file.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const QString folderName = "overlay";

bool SameContent(const QString& one, const QString& other) {
    QFile first(one);
    QFile second(other);
    if (first.size() != second.size()) return false;
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly) &&
           first.readAll() == second.readAll();
}

// The name that the picture has already as an overlay; empty when it is none.
QString NameAsOverlay(const QStringList& places, const QString& path) {
    const QString file = QFileInfo(path).canonicalFilePath();
    for (const QString& place : places) {
        const QString folder = QFileInfo(Paths::Find(place, folderName)).canonicalFilePath();
        if (folder.isEmpty() || !file.startsWith(folder + u'/')) continue;
        const QString name = file.mid(folder.size() + 1);
        if (QFileInfo(OverlayFile(places, name)).canonicalFilePath() == file) return name;
    }
    return {};
}

// The overlay folder of the program folder, created when missing.
QString OwnFolder(const QString& programFolder) {
    const QString found = Paths::Find(programFolder, folderName);
    if (!found.isEmpty()) return found;
    const QString folder = QDir(programFolder).filePath(folderName);
    (void)QDir().mkpath(folder);
    return folder;
}

// The name for a copy. A separator of the other system would make a folder of it, a line break
// fits into no settings file.
QString NumberedName(const QFileInfo& file, int number) {
    const QString end = file.suffix().isEmpty() ? QString() : u'.' + file.suffix();
    QString name = file.fileName().chopped(end.size());
    for (QChar& letter : name)
        if (letter == u'\\' || letter.category() == QChar::Other_Control) letter = u'_';
    return number == 1 ? name + end : QString("%1 (%2)%3").arg(name, QString::number(number), end);
}

}  // namespace

QStringList OverlayNames(const QStringList& places) {
    QStringList names;
    for (const QString& place : places) {
        const QString folder = place.isEmpty() ? QString() : Paths::Find(place, folderName);
        if (folder.isEmpty()) continue;
        for (const QString& name : QDir(folder).entryList(PictureKinds(), QDir::Files))
            if (!names.contains(name, Qt::CaseInsensitive)) names << name;
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

QString OverlayFile(const QStringList& places, const QString& name) {
    return FindPicture(places, folderName, name);
}

std::optional<AdoptedOverlay> AdoptOverlay(const QStringList& places, const QString& path) {
    const QString known = NameAsOverlay(places, path);
    if (!known.isEmpty()) return AdoptedOverlay{known, {}};
    const QFileInfo file(path);
    for (int number = 1;; ++number) {
        const QString name = NumberedName(file, number);
        const QString taken = OverlayFile(places, name);
        if (!taken.isEmpty()) {
            if (SameContent(taken, path)) return AdoptedOverlay{name, {}};
            continue;
        }
        const QString copy = QDir(OwnFolder(places.value(0))).filePath(name);
        if (!WholeFile::Copy(path, copy)) return std::nullopt;
        return AdoptedOverlay{name, copy};
    }
}

QString OverlayFaultText(const Texts& words, const QString& name, PictureFault fault) {
    const auto text = [&](const QString& key) { return words.Get("frmBild", key).arg(name); };
    switch (fault) {
        case PictureFault::None:
            return {};
        case PictureFault::Missing:
            return text("FaultMissing");
        case PictureFault::TooLarge:
            return text("FaultTooLarge");
        case PictureFault::Unreadable:
            break;
    }
    return text("FaultUnreadable");
}
