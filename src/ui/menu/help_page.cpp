#include "ui/menu/help_page.h"

#include <QFileInfo>

QString HelpPage(bool german, const QStringList& folders) {
    const QString page = german ? QString("/Hilfe/HILFE.html") : QString("/help/HELP.html");
    for (const QString& folder : folders)
        if (QFileInfo(folder + page).isFile()) return folder + page;
    return {};
}
