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

    // A picture that is larger than the screen is made smaller, and its window with it. A null one
    // makes a plain rectangular window of free size.
    void SetBackground(const QImage& picture);
    [[nodiscard]] bool HasBackground() const { return !background.isNull(); }

    // The mean colour of the background in an area of the window.
    [[nodiscard]] QColor Ground(const QRect& area) const;

    // What can be seen of the window, in its own pixels; empty without a background.
    [[nodiscard]] const QRegion& Outline() const { return outline; }

    // How large the window shows its picture, at most 1.
    [[nodiscard]] double Scale() const { return scale; }

  protected:
    // Lengths on the picture, pixels, as they are shown.
    [[nodiscard]] int Scaled(int length) const { return qRound(scale * length); }
    [[nodiscard]] QSize Scaled(const QSize& size) const { return size * scale; }

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QPixmap background;
    QRegion outline;
    double scale = 1;
    DragWindow drag;
};
