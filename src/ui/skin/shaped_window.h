#pragma once

#include "ui/skin/drag_window.h"

#include <QPixmap>
#include <QRegion>
#include <QWidget>

// A window without title bar and border that has the picture and the outline of its background and
// that the mouse moves by its background.
class ShapedWindow : public QWidget {
    Q_OBJECT

  public:
    explicit ShapedWindow(QWidget* parent = nullptr);

    // A null picture makes a plain rectangular window of free size.
    void SetBackground(const QImage& picture);
    [[nodiscard]] bool HasBackground() const { return !background.isNull(); }

    // The mean colour of the background in an area of the window.
    [[nodiscard]] QColor Ground(const QRect& area) const;

    // What can be seen of the window, in its own pixels; empty without a background.
    [[nodiscard]] const QRegion& Outline() const { return outline; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QPixmap background;
    QRegion outline;
    DragWindow drag;
};
