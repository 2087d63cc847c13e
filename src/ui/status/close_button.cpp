#include "ui/status/close_button.h"

#include "ui/widgets/contrast.h"

#include <QPainter>

CloseButton::CloseButton(QWidget* parent) : PictureButton({}, parent) {
    resize(sizeHint());
}

void CloseButton::SetGround(const QColor& colour) {
    ground = colour;
    update();
}

void CloseButton::paintEvent(QPaintEvent*) {
    constexpr double faint = 0.25;
    constexpr double lineWidth = 1.6;
    constexpr double arm = side / 6.0;
    const QColor ink = Contrast::IsDark(ground) ? Qt::white : Qt::black;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor disc = ink;
    disc.setAlphaF(Hovered() ? 1 : faint);
    painter.setPen(Qt::NoPen);
    painter.setBrush(disc);
    painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
    painter.setPen(QPen(Hovered() ? ground : ink, lineWidth, Qt::SolidLine, Qt::RoundCap));
    const QPointF middle = QRectF(rect()).center();
    painter.drawLine(middle - QPointF(arm, arm), middle + QPointF(arm, arm));
    painter.drawLine(middle - QPointF(arm, -arm), middle + QPointF(arm, -arm));
    if (hasFocus()) PaintFocusRing(painter, rect());
}
