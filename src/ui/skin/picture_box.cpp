#include "ui/skin/picture_box.h"

#include <QPainter>

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {}

void PictureBox::SetPicture(const QPixmap& newPicture) {
    picture = newPicture;
    resize(picture.size());
    update();
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(0, 0, picture);
}
