#include "ui/settings/settings_rows.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaProperty>

namespace {

QLayout* Line(QWidget* control, QWidget* beside) {
    auto* line = new QHBoxLayout;
    line->addWidget(control, 1);
    line->addWidget(beside);
    return line;
}

// Options and plain buttons, unlike those that show a value.
bool CarriesText(const QWidget& control) {
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    return button && qstrcmp(button->metaObject()->userProperty().name(), "checked") == 0;
}

}  // namespace

SettingsRows::SettingsRows(Bindings& ownBindings, QWidget* frame)
    : QGridLayout(frame), bindings(ownBindings) {
    setColumnStretch(1, 1);
}

// Room that is left is below the last row.
int SettingsRows::NextRow() {
    setRowStretch(next, 0);
    setRowStretch(next + 1, 1);
    return next++;
}

int SettingsRows::RowOf(QWidget* control) const {
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    getItemPosition(indexOf(control), &row, &column, &rows, &columns);
    return row;
}

void SettingsRows::Stretch(QWidget* control) {
    setRowStretch(next, 0);
    setRowStretch(RowOf(control), 1);
}

void SettingsRows::ShowRow(QWidget* control, bool shown) {
    for (QWidget* part : lines.value(control, {control})) part->setVisible(shown);
}

void SettingsRows::Add(QWidget* control, const Binding& binding, QWidget* beside) {
    if (CarriesText(*control)) {
        bindings.Add(control, binding);
        AddWhole(control);
        return;
    }
    auto* caption = new QLabel;
    AddLine(caption, control, beside);
    bindings.Add(control, binding, caption);
}

void SettingsRows::AddLine(QLabel* caption, QWidget* control, QWidget* beside) {
    const int row = NextRow();
    lines[control] = {caption, control};
    if (beside) lines[control] << beside;
    const bool narrow = control->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
    addWidget(caption, row, 0);
    if (beside)
        addLayout(Line(control, beside), row, 1);
    else
        addWidget(control, row, 1, narrow ? Qt::AlignLeft : Qt::Alignment());
}

void SettingsRows::AddBelow(QWidget* control, const Binding& binding, QWidget* beside) {
    auto* caption = new QLabel;
    AddWhole(caption);
    if (beside)
        AddWhole(Line(control, beside));
    else
        AddWhole(control);
    bindings.Add(control, binding, caption);
}

void SettingsRows::AddNote(const Binding& binding) {
    auto* note = new QLabel;
    note->setWordWrap(true);
    AddWhole(note);
    bindings.Add(note, binding);
}

void SettingsRows::AddSpace() {
    constexpr int space = 5;
    setRowMinimumHeight(NextRow(), space);
}
