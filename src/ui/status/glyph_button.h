#pragma once

#include "ui/skin/picture_button.h"

// A small round button for what skins have no picture of. It draws itself, light or dark as the
// ground asks.
class GlyphButton : public PictureButton {
    Q_OBJECT

  public:
    enum class Glyph { Cross, Eye };

    GlyphButton(Glyph glyphShown, QWidget* parent);

    // The colour that it lies on.
    void SetGround(const QColor& colour);

    [[nodiscard]] QSize sizeHint() const override { return {side, side}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    static constexpr int side = 22;  // pixels

    void PaintGlyph(QPainter& painter, const QColor& ink) const;

    Glyph glyph;
    QColor ground = Qt::black;
};
