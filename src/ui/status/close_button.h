#pragma once

#include "ui/skin/picture_button.h"

// A small cross that closes a window without a frame. It draws itself, light or dark as the ground
// asks, because skins have no picture of it.
class CloseButton : public PictureButton {
    Q_OBJECT

  public:
    explicit CloseButton(QWidget* parent);

    // The colour that it lies on.
    void SetGround(const QColor& colour);

    [[nodiscard]] QSize sizeHint() const override { return {side, side}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    static constexpr int side = 22;  // pixels

    QColor ground = Qt::black;
};
