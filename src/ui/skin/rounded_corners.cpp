#include "ui/skin/rounded_corners.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

void RoundedCorners::Cut(QWidget& window) {
    QPainterPath outline;
    outline.addRoundedRect(QRectF(window.rect()), Radius, Radius);
    window.setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

void RoundedCorners::DrawEdge(QWidget& window) {
    QPainter painter(&window);
    constexpr QRgb line = 0x9fb4b9;
    painter.setPen(QColor(line));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRoundedRect(QRectF(window.rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}
