#include "ui/skin/rounded_corners.h"

#include "ui/skin/window_system.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

void RoundedCorners::Prepare(QWidget& window) {
    if (!WindowSystem::CutsWindows()) window.setAttribute(Qt::WA_TranslucentBackground);
}

void RoundedCorners::Cut(QWidget& window) {
    QPainterPath outline;
    outline.addRoundedRect(QRectF(window.rect()), Radius, Radius);
    window.setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

void RoundedCorners::Paint(QWidget& window) {
    QPainter painter(&window);
    if (WindowSystem::CutsWindows())
        painter.fillRect(window.rect(), window.palette().window());
    else
        painter.setBrush(window.palette().window());
    constexpr QRgb line = 0x9fb4b9;
    painter.setPen(QColor(line));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRoundedRect(QRectF(window.rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}
