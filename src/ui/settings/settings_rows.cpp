#include "ui/settings/settings_rows.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>

namespace {

QLayout* Line(QWidget* control, QWidget* beside) {
    auto* line = new QHBoxLayout;
    line->addWidget(control, 1);
    line->addWidget(beside);
    return line;
}

}  // namespace

SettingsRows::SettingsRows(Bindings& ownBindings, QWidget* frame)
    : QFormLayout(frame), bindings(ownBindings) {
    setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    setRowWrapPolicy(QFormLayout::DontWrapRows);
}

void SettingsRows::Add(QWidget* control, const Binding& binding, QWidget* beside) {
    if (qobject_cast<QAbstractButton*>(control)) {
        bindings.Add(control, binding);
        addRow(control);
        return;
    }
    auto* caption = new QLabel;
    if (beside)
        addRow(caption, Line(control, beside));
    else
        addRow(caption, control);
    bindings.Add(control, binding, caption);
}

void SettingsRows::AddBelow(QWidget* control, const Binding& binding, QWidget* beside) {
    auto* caption = new QLabel;
    addRow(caption);
    if (beside)
        addRow(Line(control, beside));
    else
        addRow(control);
    bindings.Add(control, binding, caption);
}

void SettingsRows::AddNote(const Binding& binding) {
    auto* note = new QLabel;
    note->setWordWrap(true);
    addRow(note);
    bindings.Add(note, binding);
}

void SettingsRows::AddSpace() {
    addItem(new QSpacerItem(0, 0));  // the spacing of a row more
}
