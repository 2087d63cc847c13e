#include "ui/skin/drag_window.h"

#include "ui/skin/window_system.h"

#include <QMouseEvent>
#include <QWindow>

void DragWindow::Press(QWidget& window, const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return;
    QWidget& top = *window.window();
    if (QWidget* grabber = QWidget::mouseGrabber()) grabber->releaseMouse();
    if (QWindow* handle = top.windowHandle(); handle && handle->startSystemMove()) return;
    if (!WindowSystem::PlacesWindows()) return;
    moved = &top;
    grip = event.globalPosition().toPoint() - top.pos();
}

void DragWindow::Move(const QMouseEvent& event) {
    if (moved) moved->move(event.globalPosition().toPoint() - grip);
}
