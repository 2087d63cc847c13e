#include "ui/skin/shaped_window.h"

#include "ui/skin/window_shape.h"
#include "ui/skin/window_system.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace {

// Without a frame they would pass for a mere part of a window.
QAccessibleInterface* Accessible(const QString&, QObject* object) {
    auto* window = qobject_cast<ShapedWindow*>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

}  // namespace

ShapedWindow::ShapedWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinimizeButtonHint) {
    if (!WindowSystem::CutsWindows()) setAttribute(Qt::WA_TranslucentBackground);
    QAccessible::installFactory(Accessible);
}

void ShapedWindow::SetBackground(const QImage& picture) {
    scale = 1;
    if (picture.isNull()) {
        background = {};
        outline = {};
        clearMask();
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        update();
        return;
    }
    const QSizeF room = screen()->availableSize();
    scale = std::min({1.0, room.width() / picture.width(), room.height() / picture.height()});
    // Without new colours at the edges of what is cut away.
    const QImage shown = scale < 1 ? picture.scaled(Scaled(picture.size())) : picture;
    outline = ShapeWindowFromPicture(*this, shown);
    const QRegion whole = scale < 1 ? BuildRegionFromPicture(picture) : outline;
    background = QPixmap::fromImage(WindowSystem::CutsWindows() ? WithCleanEdges(picture, whole)
                                                                : CutOut(picture, whole));
    update();
}

QColor ShapedWindow::Ground(const QRect& area) const {
    if (!HasBackground() || area.isEmpty()) return palette().color(QPalette::Window);
    const QRect there(area.topLeft() / scale, area.size() / scale);
    const QImage part = background.copy(there).toImage();
    return part.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0);
}

void ShapedWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (background.isNull()) {
        painter.fillRect(rect(), palette().window());
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), background);
}

void ShapedWindow::mousePressEvent(QMouseEvent* event) {
    drag.Press(*this, *event);
}

void ShapedWindow::mouseMoveEvent(QMouseEvent* event) {
    drag.Move(*event);
}

void ShapedWindow::mouseReleaseEvent(QMouseEvent*) {
    drag.Release();
}
