#pragma once

#include <QImage>
#include <QString>
#include <QSvgRenderer>

// An SVG file as the artwork uses it: drawn pixel for pixel, with named elements that say which
// part of the drawing is the outline, the metal or the cell of one control.
// A missing or damaged file or element throws std::runtime_error with what is wrong and where.
class Drawing {
  public:
    explicit Drawing(const QString& file);

    // The whole drawing on nothing, at its own size or scaled to `size` pixels.
    [[nodiscard]] QImage Render(QSize size = {}) const;

    [[nodiscard]] bool Has(const QString& id) const { return renderer.elementExists(id); }

    // One element alone, at its place in an image of the drawing's size.
    [[nodiscard]] QImage RenderElement(const QString& id) const;

    // The pixels that the element covers.
    [[nodiscard]] QRect Cell(const QString& id) const;

  private:
    void Need(const QString& id) const;

    QString file;
    mutable QSvgRenderer renderer;  // its drawing routines are not const
};

// The body of a window: the outline is the element "silhouette", hard-edged. Outside of it the
// image is transparent, inside opaque to the last pixel. The element "brushed" or "grained" gets
// the structure of brushed metal or of cast plastic wherever "smooth" leaves it in sight.
[[nodiscard]] QImage RenderBody(const Drawing& drawing);
