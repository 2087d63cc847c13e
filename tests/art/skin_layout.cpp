#include "art/skin_layout.h"

QString ProgramFile(const QString& name) {
    return QStringLiteral(STILLPOST_PROGRAM "/") + name;
}
QString SkinFile(const QString& skin, const QString& name) {
    return ProgramFile("Skins/" + skin + "/" + name);
}

QImage Picture(const QString& file) {
    return QImage(file).convertToFormat(QImage::Format_RGB32);
}

QMap<QString, QRect> Layout::MainWindow() const {
    return {
        {"preview", Preview()},
        {"driver and list below it", At("Label_Driver", {200, 44})},
        {"LEDReigth", Of("LEDReigth", "LEDreight")},
        {"LEDLeft", Of("LEDLeft", "LEDleft")},
        {"btnMin", Of("btnMin", "button_min")},
        {"btnExit", Of("btnExit", "button_ex")},
        {"btnStart", Of("btnStart", "button_go")},
        {"btnPause", Of("btnPause", "button_pau")},
        {"btnStop", Of("btnStop", "button_stop")},
        {"btnOptions", Of("btnOptions", "button_Options")},
        {"pic_klappe_open", Of("pic_klappe_open", "button_klappe_open")},
    };
}

QMap<QString, QRect> Layout::StatusWindow() const {
    return {
        {"Slider1", Slider("1")},
        {"Slider2", Slider("2")},
        {"Prog_Bar", Of("Prog_Bar", "progress_bg")},
        {"Label_Treiber", At("Label_Treiber", {Pixels("Label_Treiber/Width"), 20})},
        {"Label_Rec", At("Label_Rec", {50, 20})},
        {"Label_Online", At("Label_Online", {90, 20})},
        {"Label_Status", At("Label_Status", {260, 20})},
        {"time-out and gauge below it", At("Label_TimeOut", {124, 30})},
        {"Label_Pic", At("Label_Pic", {100, 18})},
        {"Label_MB", At("Label_MB", {100, 18})},
        {"Label_Aufloesung", At("Label_Aufloesung", {150, 18})},
        {"Label_JPG", At("Label_JPG", {150, 18})},
        {"Label_Mouse", At("Label_Mouse", {300, 36})},
        {"Label_Overlay", At("Label_Overlay", {150, 18})},
        {"Label_Time", At("Label_Time", {80, 18})},
        {"Label_Upload", At("Label_Upload", {150, 18})},
    };
}

QStringList Misplaced(const QMap<QString, QRect>& places, const QImage& bitmap) {
    QStringList wrong;
    for (auto one = places.begin(); one != places.end(); ++one) {
        const QRect place = one.value();
        bool onBody = bitmap.rect().contains(place) && !place.isEmpty();
        for (int y = place.top(); onBody && y <= place.bottom(); ++y)
            for (int x = place.left(); onBody && x <= place.right(); ++x)
                onBody = bitmap.pixel(x, y) != CutAway;
        if (!onBody) wrong << one.key() + " is not on the body";
        for (auto other = std::next(one); other != places.end(); ++other)
            if (place.intersects(other.value())) wrong << one.key() + " is on " + other.key();
    }
    return wrong;
}
