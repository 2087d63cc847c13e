#include "ui/tray/program_icons.h"

#include <QDir>

QIcon ProgramIcon(const QStringList& folders, const QString& name) {
    for (const QString& folder : folders) {
        const QDir icons(folder + "/icons");
        QIcon icon;
        for (const QString& file : icons.entryList({name + "-*.png"}, QDir::Files)) {
            // Read now: the file may be a damaged one.
            const QPixmap picture(icons.filePath(file));
            if (!picture.isNull()) icon.addPixmap(picture);
        }
        if (!icon.isNull()) return icon;
    }
    return {};
}
