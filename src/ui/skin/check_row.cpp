#include "ui/skin/check_row.h"

#include <QKeyEvent>
#include <QPainter>

namespace {
constexpr int margin = 6;
constexpr int leastMark = 16;  // pixels, width and height
}  // namespace

CheckRow::CheckRow(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setCheckable(true);
}

void CheckRow::SetMark(const QPixmap& picture, bool checked) {
    mark = picture;
    setChecked(checked);
    updateGeometry();
    update();
}

QSize CheckRow::sizeHint() const {
    const QSize picture = mark.size().expandedTo({leastMark, leastMark});
    const QSize words = fontMetrics().size(Qt::TextSingleLine, text());
    return {picture.width() + words.width() + 3 * margin,
            std::max(picture.height(), words.height()) + margin};
}

void CheckRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool lit = hasFocus() || underMouse();
    if (lit) painter.fillRect(rect(), palette().highlight());
    painter.setPen(palette().color(lit ? QPalette::HighlightedText : QPalette::WindowText));
    const QSize room = mark.size().expandedTo({leastMark, leastMark});
    const QRect picture(QPoint(margin, (height() - room.height()) / 2), room);
    if (!mark.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(picture.topLeft(), mark);
    } else if (isChecked()) {
        painter.drawText(picture, Qt::AlignCenter, QChar(0x2713));
    }
    painter.drawText(rect().adjusted(room.width() + 2 * margin, 0, 0, 0),
                     Qt::AlignVCenter | Qt::TextSingleLine, text());
}

void CheckRow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void CheckRow::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void CheckRow::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}
