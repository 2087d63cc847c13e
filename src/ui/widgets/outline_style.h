#pragma once

#include <QHash>
#include <QProxyStyle>

// The toolkit's own style draws the outlines of fields, boxes and frames a little darker than the
// window, which cannot be seen on a dark one and least of all on a black one of high contrast.
// There this style gives them a colour that can; a light window looks as ever.
class OutlineStyle : public QProxyStyle {
    Q_OBJECT

  public:
    // In the place of the toolkit's own style. Those of the desktops look after themselves.
    static void Install();

    // Draws with the toolkit's own style.
    OutlineStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

  private:
    [[nodiscard]] QPalette Outlined(const QPalette& colours) const;

    // By the key of the palette that they are made from: the toolkit keeps what it has drawn by
    // that of the palette it was drawn with.
    mutable QHash<qint64, QPalette> outlined;
};
