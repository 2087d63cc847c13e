#include "ui/status/display_font.h"

#include "base/paths.h"

#include <QFontDatabase>

namespace {

const QString wanted = QStringLiteral("Digital Readout Expanded");
const QString own = QStringLiteral("Stillpost Readout");

QString Family(const QStringList& places) {
    if (QFontDatabase::hasFamily(wanted)) return wanted;
    const QString file = Paths::Find(places, "fonts/StillpostReadout.ttf");
    if (!QFontDatabase::hasFamily(own) && !file.isEmpty()) QFontDatabase::addApplicationFont(file);
    return QFontDatabase::hasFamily(own) ? own : QString();
}

}  // namespace

QFont DisplayFont(const QStringList& places, int pixels) {
    QFont font;
    const QString family = Family(places);
    if (!family.isEmpty()) font.setFamily(family);
    font.setPixelSize(pixels);
    return font;
}
