#include "ui/skin/picture_box.h"

#include <QPainter>

PictureBox::PictureBox(QWidget* parent) : QLabel(parent) {}

void PictureBox::SetPicture(const QPixmap& newPicture) {
    setPixmap(newPicture);
    resize(newPicture.size());
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(0, 0, pixmap());
}
