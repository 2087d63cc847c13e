#include "ui/widgets/menu_row.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int side = 10;      // pixels left and right of everything
constexpr int markRoom = 18;  // width and height of a check picture
constexpr int arrow = 5;      // half the height of the arrow

}  // namespace

MenuRow::MenuRow(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void MenuRow::SetMarks(const QPixmap& picture, bool checked, const QPixmap& litPicture) {
    setCheckable(true);
    mark = picture;
    litMark = litPicture.isNull() ? picture : litPicture;
    setChecked(checked);
    updateGeometry();
    update();
}

void MenuRow::SetHasFlyOut(bool has) {
    hasFlyOut = has;
    updateGeometry();
}

void MenuRow::SetOpen(bool isOpen) {
    open = isOpen;
    update();
}

QSize MenuRow::sizeHint() const {
    const int words = fontMetrics().horizontalAdvance(text());
    const int front = isCheckable() ? markRoom + side / 2 : 0;
    const int behind = hasFlyOut ? 3 * arrow : 0;
    constexpr int leastHeight = 20;
    constexpr int aboveAndBelow = 4;
    return {side + front + words + behind + side,
            qMax(leastHeight, fontMetrics().height() + aboveAndBelow)};
}

void MenuRow::PaintMark(QPainter& painter, bool lit) {
    const QRect room(side / 2, (height() - markRoom) / 2, markRoom, markRoom);
    if (mark.isNull()) {
        if (isChecked()) painter.drawText(room, Qt::AlignCenter, QChar(0x2713));
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // The pictures stand on white, which so becomes what is below them.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.drawPixmap(room, lit ? litMark : mark);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void MenuRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool lit = hasFocus() || open;
    if (lit) painter.fillRect(rect().adjusted(3, 0, -3, 0), palette().highlight());
    painter.setPen(palette().color(QPalette::WindowText));
    if (isCheckable()) PaintMark(painter, lit);
    const int left = side + (isCheckable() ? markRoom + side / 2 : 0);
    painter.drawText(rect().adjusted(left, 0, -side, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                     text());
    if (!hasFlyOut) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::WindowText));
    const QPointF tip(width() - side, height() / 2.0);
    painter.drawPolygon(
        QPolygonF({tip, tip - QPointF(arrow, arrow - 1.0), tip - QPointF(arrow, 1.0 - arrow)}));
}

void MenuRow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            click();
            break;
        case Qt::Key_Down:
            focusNextChild();
            break;
        case Qt::Key_Up:
            focusPreviousChild();
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            event->ignore();
            break;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

// Not as soon as the line is below the mouse: who opens the menu with the keyboard has left the
// mouse anywhere.
void MenuRow::mouseMoveEvent(QMouseEvent* event) {
    QAbstractButton::mouseMoveEvent(event);
    setFocus(Qt::MouseFocusReason);
    emit Entered();
}

void MenuRow::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    update();
}
