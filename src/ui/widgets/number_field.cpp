#include "ui/widgets/number_field.h"

#include <algorithm>

NumberField::NumberField(int ownLeast, int ownMost, QWidget* parent)
    : QLineEdit(parent), least(ownLeast), most(ownMost) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, &NumberField::Mark);
}

std::optional<int> NumberField::Value() const {
    const QString typed = text().trimmed();
    if (typed.isEmpty()) return whenEmpty;
    bool isNumber = false;
    const int number = typed.toInt(&isNumber);
    if (!isNumber || number < least || number > most) return std::nullopt;
    return number;
}

QSize NumberField::sizeHint() const {
    const auto length = [](int number) { return QString::number(number).size(); };
    constexpr qsizetype spare = 2;
    const qsizetype digits = std::max(length(least), length(most)) + spare;
    const QSize usual = QLineEdit::sizeHint();
    const int frame = usual.height() - fontMetrics().height();
    return {fontMetrics().horizontalAdvance(QString(digits, u'0')) + frame, usual.height()};
}

// Red on white and white on dark both read badly; a red ground with white letters does everywhere.
void NumberField::Mark() {
    QPalette colours;
    if (!Value()) {
        constexpr QRgb warning = 0xb3261e;
        colours.setColor(QPalette::Base, QColor(warning));
        colours.setColor(QPalette::Text, Qt::white);
    }
    setPalette(colours);
}
