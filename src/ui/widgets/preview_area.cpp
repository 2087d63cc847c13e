#include "ui/widgets/preview_area.h"

#include <QPainter>

PreviewArea::PreviewArea(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PreviewArea::SetPicture(const QImage& newest) {
    picture = newest;
    update();
}

void PreviewArea::Clear() {
    picture = {};
    update();
}

void PreviewArea::SetStretched(bool on) {
    stretched = on;
    update();
}

void PreviewArea::SetCentred(bool on) {
    centred = on;
    update();
}

QRect PreviewArea::Place(const QSize& picture, const QSize& area, bool stretched, bool centred) {
    if (stretched) return {QPoint(0, 0), area};
    QRect place({0, 0}, picture.scaled(area, Qt::KeepAspectRatio));
    if (centred) place.moveCenter(QRect({0, 0}, area).center());
    return place;
}

void PreviewArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit RoomChanged((QSizeF(size()) * devicePixelRatioF()).toSize());
}

void PreviewArea::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (picture.isNull()) return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(Place(picture.size(), size(), stretched, centred), picture);
}
