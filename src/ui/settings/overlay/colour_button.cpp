#include "ui/settings/overlay/colour_button.h"

#include <QColorDialog>
#include <QPainter>

namespace {

constexpr QSize swatch(48, 16);
constexpr int levels = 256;  // of a colour's parts

}  // namespace

ColourButton::ColourButton(QWidget* parent) : QPushButton(parent) {
    setIconSize(swatch);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    SetColour(colour);
    connect(this, &QPushButton::clicked, this, &ColourButton::Choose);
}

void ColourButton::SetColour(const QColor& newColour) {
    const bool other = newColour != colour;
    colour = newColour;
    QPixmap picture(swatch);
    picture.fill(colour);
    QPainter painter(&picture);
    painter.setPen(Qt::gray);
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    setIcon(picture);
    if (other) emit Changed();
}

void ColourButton::Choose() {
    auto* chooser = new QColorDialog(colour, this);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setOption(QColorDialog::DontUseNativeDialog);
    chooser->setWindowTitle(accessibleName());
    connect(chooser, &QColorDialog::currentColorChanged, this, &ColourButton::SetColour);
    connect(chooser, &QDialog::rejected, this, [this, old = colour] { SetColour(old); });
    chooser->open();
}

int ColourButton::Number() const {
    return colour.red() + levels * (colour.green() + levels * colour.blue());
}

void ColourButton::SetNumber(int number) {
    SetColour({number % levels, number / levels % levels, number / levels / levels % levels});
}
