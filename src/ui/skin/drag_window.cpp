#include "ui/skin/drag_window.h"

#include "ui/skin/window_system.h"

#include <QMouseEvent>
#include <QWindow>

#include <utility>

void DragWindow::Press(QWidget& window, const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return;
    if (QWidget* grabber = QWidget::mouseGrabber()) grabber->releaseMouse();
    pressed = window.window();
    grip = event.globalPosition().toPoint() - pressed->pos();
}

// Not with the press: of a mere click the window system may hear when the button is up again, and
// the window would hang on the pointer until the next one.
void DragWindow::Begin() {
    QWidget* window = std::exchange(pressed, nullptr);
    if (!window) return;
    if (QWindow* handle = window->windowHandle(); handle && handle->startSystemMove()) return;
    if (WindowSystem::PlacesWindows()) moved = window;
}

void DragWindow::Move(const QMouseEvent& event) {
    if (event.buttons() & Qt::LeftButton) Begin();
    if (moved) moved->move(event.globalPosition().toPoint() - grip);
}
