#include "ui/skin/shaped_window.h"

#include "ui/skin/window_shape.h"
#include "ui/skin/window_system.h"

#include <QAccessibleWidget>
#include <QPainter>

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
    if (picture.isNull()) {
        background = {};
        outline = {};
        clearMask();
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    } else {
        outline = ShapeWindowFromPicture(*this, picture);
        background =
            QPixmap::fromImage(WindowSystem::CutsWindows() ? WithCleanEdges(picture, outline)
                                                           : CutOut(picture, outline));
    }
    update();
}

QColor ShapedWindow::Ground(const QRect& area) const {
    if (!HasBackground() || area.isEmpty()) return palette().color(QPalette::Window);
    const QImage part = background.copy(area).toImage();
    return part.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0);
}

void ShapedWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (background.isNull()) {
        painter.fillRect(rect(), palette().window());
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(0, 0, background);
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
