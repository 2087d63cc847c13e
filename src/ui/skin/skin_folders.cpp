#include "ui/skin/skin_folders.h"

#include "base/paths.h"

#include <QDir>

#include <array>

QStringList SkinFolders::Names() const {
    QStringList names;
    for (const QString& place : places) {
        const QString skins = Paths::Find(place, "Skins");
        if (skins.isEmpty()) continue;
        for (const QFileInfo& entry :
             QDir(skins).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
            if (!entry.fileName().startsWith(u'.') &&
                AttributeLetters(AttributesOf(entry)).contains(u'D') &&
                !names.contains(entry.fileName(), Qt::CaseInsensitive))
                names << entry.fileName();
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
    for (const QString& place : places) {
        const QString found = Paths::Find(place, "Skins/" + name + "/" + file);
        if (!found.isEmpty()) return found;
    }
    return {};
}

QString AttributeLetters(unsigned bits) {
    using namespace FileAttribute;
    struct Letter {
        unsigned Bit;
        QChar Sign;
    };
    constexpr std::array letters{Letter{Archive, u'A'},   Letter{Compressed, u'C'},
                                 Letter{Directory, u'D'}, Letter{Hidden, u'H'},
                                 Letter{Normal, u'N'},    Letter{ReadOnly, u'R'},
                                 Letter{System, u'S'}};
    QString text;
    for (const Letter& letter : letters)
        if ((bits & letter.Bit) != 0) text += letter.Sign;
    return text;
}

unsigned AttributesOf(const QFileInfo& file) {
    unsigned bits = 0;
    if (file.isDir()) bits |= FileAttribute::Directory;
    if (file.isHidden()) bits |= FileAttribute::Hidden;
    if (file.exists() && !file.isWritable()) bits |= FileAttribute::ReadOnly;
    return bits == 0 ? FileAttribute::Normal : bits;
}
