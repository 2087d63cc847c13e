#include "ui/widgets/contrast.h"

bool Contrast::IsDark(const QColor& ground) {
    constexpr int middleGrey = 140;
    return qGray(ground.rgb()) <= middleGrey;
}

QColor Contrast::Outline(const QPalette& colours) {
    const QColor ground = colours.color(QPalette::Window);
    const QColor text = colours.color(QPalette::Active, QPalette::WindowText);
    return QColor((ground.red() + text.red()) / 2, (ground.green() + text.green()) / 2,
                  (ground.blue() + text.blue()) / 2);
}
