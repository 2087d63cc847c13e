#include "ui/status/glyph_button.h"

#include "ui/widgets/contrast.h"

#include <QPainter>
#include <QPainterPath>

GlyphButton::GlyphButton(Glyph glyphShown, QWidget* parent)
    : PictureButton({}, parent), glyph(glyphShown) {
    resize(sizeHint());
}

void GlyphButton::SetGround(const QColor& colour) {
    ground = colour;
    update();
}

void GlyphButton::PaintGlyph(QPainter& painter, const QColor& ink) const {
    constexpr double lineWidth = 1.6;
    constexpr double arm = side / 6.0;
    const QPointF middle = QRectF(rect()).center();
    painter.setPen(QPen(ink, lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    if (glyph == Glyph::Cross) {
        painter.drawLine(middle - QPointF(arm, arm), middle + QPointF(arm, arm));
        painter.drawLine(middle - QPointF(arm, -arm), middle + QPointF(arm, -arm));
        return;
    }
    constexpr double reach = side / 3.2;
    QPainterPath lids(middle - QPointF(reach, 0));
    lids.quadTo(middle - QPointF(0, reach), middle + QPointF(reach, 0));
    lids.quadTo(middle + QPointF(0, reach), middle - QPointF(reach, 0));
    painter.drawPath(lids);
    painter.setBrush(ink);
    painter.drawEllipse(middle, 1, 1);
}

void GlyphButton::paintEvent(QPaintEvent*) {
    constexpr double veil = 0.55;
    constexpr double faint = 0.25;
    const QColor ink = Contrast::IsDark(ground) ? Qt::white : Qt::black;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto disc = [&painter, this](QColor colour, double opacity) {
        colour.setAlphaF(static_cast<float>(opacity));
        painter.setBrush(colour);
        painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
    };
    disc(ground, veil);
    disc(ink, Hovered() ? 1 : faint);
    PaintGlyph(painter, Hovered() ? ground : ink);
    if (hasFocus()) PaintFocusRing(painter, rect());
}
