#include "ui/widgets/number_box.h"

NumberBox::NumberBox(QWidget* parent) : QSpinBox(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // What is typed below the range ends at its least number, not at the one before.
    setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
}

void NumberBox::fixup(QString& typed) const {
    if (typed.isEmpty() && usual)
        typed = QString::number(*usual);
    else
        QSpinBox::fixup(typed);
}
