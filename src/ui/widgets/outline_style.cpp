#include "ui/widgets/outline_style.h"

#include "ui/widgets/contrast.h"

#include <QApplication>
#include <QStyleOption>

namespace {

const QString toolkitStyle = QStringLiteral("fusion");

// Calls `draw` with a copy of the option that has these colours. False for other kinds of options.
template <class Option, class Any, class Draw>
bool WithColours(const Any* option, const QPalette& colours, const Draw& draw) {
    const auto* known = qstyleoption_cast<const Option*>(option);
    if (!known) return false;
    Option copy(*known);
    copy.palette = colours;
    draw(&copy);
    return true;
}

bool HasOutline(QStyle::PrimitiveElement element) {
    switch (element) {
        case QStyle::PE_Frame:
        case QStyle::PE_FrameGroupBox:
        case QStyle::PE_FrameLineEdit:
        case QStyle::PE_IndicatorCheckBox:
        case QStyle::PE_IndicatorRadioButton:
        case QStyle::PE_PanelButtonCommand:
            return true;
        default:
            return false;
    }
}

}  // namespace

void OutlineStyle::Install() {
    if (QApplication::style()->name() == toolkitStyle) QApplication::setStyle(new OutlineStyle);
}

OutlineStyle::OutlineStyle() : QProxyStyle(toolkitStyle) {}

// The style makes its outlines out of the window's colour.
QPalette OutlineStyle::Outlined(const QPalette& colours) const {
    constexpr int most = 20;  // a desktop that changes its colours all the time
    constexpr int darker = 140;
    if (outlined.size() > most) outlined.clear();
    QPalette& made = outlined[colours.cacheKey()];
    if (made.isBrushSet(QPalette::Active, QPalette::Window)) return made;
    made = colours;
    made.setColor(QPalette::Window, Contrast::Outline(colours).lighter(darker));
    return made;
}

void OutlineStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOption* changed) {
        QProxyStyle::drawPrimitive(element, changed, painter, widget);
    };
    const QPalette& colours = option->palette;
    if (!HasOutline(element) || !Contrast::IsDark(colours.color(QPalette::Window)))
        return draw(option);
    const QPalette outlines = Outlined(colours);
    if (!WithColours<QStyleOptionFrame>(option, outlines, draw) &&
        !WithColours<QStyleOptionButton>(option, outlines, draw))
        draw(option);
}

void OutlineStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOptionComplex* changed) {
        QProxyStyle::drawComplexControl(control, changed, painter, widget);
    };
    const QPalette& colours = option->palette;
    if (!Contrast::IsDark(colours.color(QPalette::Window))) return draw(option);
    const QPalette outlines = Outlined(colours);
    if (!WithColours<QStyleOptionSpinBox>(option, outlines, draw) &&
        !WithColours<QStyleOptionComboBox>(option, outlines, draw) &&
        !WithColours<QStyleOptionSlider>(option, outlines, draw))
        draw(option);
}
