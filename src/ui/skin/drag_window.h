#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>

class QMouseEvent;

// Lets the mouse move a window that has no title bar. The window hands over the mouse events of its
// background. The window system moves the window where it can; elsewhere this class does.
class DragWindow {
  public:
    // A press: only the left button moves the window.
    void Press(QWidget& window, const QMouseEvent& event);
    void Move(const QMouseEvent& event);
    void Release() { pressed = moved = nullptr; }

  private:
    void Begin();

    QPointer<QWidget> pressed;  // until the mouse moves
    QPointer<QWidget> moved;    // while this class does the moving
    QPoint grip;                // from the window's top left corner to the pointer
};
