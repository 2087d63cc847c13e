#include "ui/main/link_button.h"

#include "ui/skin/picture_button.h"

#include <QKeyEvent>
#include <QPainter>

LinkButton::LinkButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    // As the line in whose place it is shown.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void LinkButton::SetText(const QString& what, const QString& opens) {
    brief = what + "...";
    setText(what + " - " + opens);
}

QSize LinkButton::sizeHint() const {
    return fontMetrics().size(Qt::TextSingleLine, text());
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(true);
    const auto fits = [&] { return QFontMetrics(underlined).horizontalAdvance(text()) <= width(); };
    if (!fits()) underlined.setStretch(QFont::SemiCondensed);
    painter.setFont(underlined);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, fits() ? text() : brief);
    if (hasFocus()) PaintFocusRing(painter, rect());
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}
