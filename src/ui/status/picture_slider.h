#pragma once

#include "ui/status/slider_values.h"

#include <QPixmap>

#include <optional>

// A slider drawn from pictures: a track, a handle, and the handle lit while the mouse holds it.
// Only the left mouse button moves the handle; with the keyboard the arrow, Page, Home and End keys
// do. Without pictures it draws itself.
class PictureSlider : public QAbstractSlider {
    Q_OBJECT

  public:
    PictureSlider(const SliderValues& sliderValues, QWidget* parent);

    // Null pictures draw plainly; a missing lit handle is replaced by the other one.
    void SetPictures(const QPixmap& trackPicture, const QPixmap& handlePicture,
                     const QPixmap& litPicture);
    // Places the track with its top left corner, and the handle with its top edge; pixels of the
    // parent. Call it after SetPictures.
    void Place(const QPoint& trackTopLeft, int handleTop);

    // Shows a value that was set elsewhere; beyond the range the handle stands at the end. While
    // the operator is choosing nothing changes.
    void SetValue(int newValue);

    // The operator is choosing: holds the handle, or a key.
    [[nodiscard]] bool Choosing() const { return held || pressedKey; }
    // The handle's place, pixels of the slider.
    [[nodiscard]] QRect Handle() const;

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    // The mouse or a key has taken hold of the handle.
    void Taken();
    // A value is offered while the operator is choosing.
    void Offered(int value);
    // It was let go; before Chosen().
    void Released();
    // The operator has chosen this value.
    void Chosen(int value);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    [[nodiscard]] QRect Track() const;
    [[nodiscard]] QSize HandleSize() const;
    [[nodiscard]] int Span() const;
    void TakeStep(int action);
    void Offer(int value);
    void LetGo(bool choose);
    void PaintPlain(QPainter& painter) const;

    SliderValues values;
    QPixmap track;
    QPixmap handle;
    QPixmap lit;
    QRect place;                    // of the track picture, in the slider
    int handleY = 0;                // top edge, in the slider
    std::optional<int> held;        // left edge of the handle while the mouse holds it
    std::optional<int> pressedKey;  // while one chooses
    bool offered = false;           // since it was taken
};
