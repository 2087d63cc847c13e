#include "ui/skin/picture_button.h"

#include "ui/skin/window_system.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

void PaintFocusRing(QPainter& painter, const QRect& around) {
    // Dark and light, so that it can be seen on a picture of any colour.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(around.adjusted(0, 0, -1, -1));
    painter.setPen(Qt::white);
    painter.drawRect(around.adjusted(1, 1, -2, -2));
}

PictureButton::PictureButton(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    setMouseTracking(true);
    // A click with the mouse leaves no ring behind.
    setFocusPolicy(Qt::TabFocus);
}

void PictureButton::SetPictures(const QPixmap& normalPicture, const QPixmap& hoverPicture) {
    normal = normalPicture;
    hover = hoverPicture.isNull() ? normalPicture : hoverPicture;
    resize(sizeHint());
    updateGeometry();
    update();
}

QSize PictureButton::sizeHint() const {
    if (!normal.isNull()) return normal.size();
    constexpr int padding = 8;
    return fontMetrics().size(Qt::TextShowMnemonic, text()) + QSize(2 * padding, padding);
}

void PictureButton::SetHovered(bool on) {
    if (hovered == on) return;
    hovered = on;
    update();
}

void PictureButton::mouseMoveEvent(QMouseEvent* event) {
    QAbstractButton::mouseMoveEvent(event);
    // A pixel behind the right and the lower edge is still on the button. The mouse is not captured
    // meanwhile: the toolkit tells when it leaves, and no other window could be clicked.
    SetHovered(QRect(0, 0, width() + 1, height() + 1).contains(event->position().toPoint()));
}

void PictureButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    SetHovered(false);
}

void PictureButton::changeEvent(QEvent* event) {
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled()) SetHovered(false);
}

bool PictureButton::event(QEvent* event) {
    // A shortcut shows the button pressed for a moment before it clicks. Where the desktop places
    // popups it lets them open only while the key is down.
    if (event->type() != QEvent::Shortcut || WindowSystem::PlacesWindows())
        return QAbstractButton::event(event);
    click();
    return true;
}

void PictureButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void PictureButton::paintEvent(QPaintEvent*) {
    normal.isNull() ? PaintPlain() : PaintPicture();
}

void PictureButton::PaintPicture() {
    constexpr double dimmed = 0.4;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(isEnabled() ? 1 : dimmed);
    const int sunken = isDown() ? 1 : 0;
    painter.drawPixmap(sunken, sunken, hovered ? hover : normal);
    if (hasFocus()) PaintFocusRing(painter, rect());
}

void PictureButton::PaintPlain() {
    QStylePainter painter(this);
    QStyleOptionButton option;
    option.initFrom(this);
    option.text = text();
    option.state |= isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
    option.state.setFlag(QStyle::State_MouseOver, hovered);
    painter.drawControl(QStyle::CE_PushButton, option);
    if (hasFocus()) PaintFocusRing(painter, rect());
}
