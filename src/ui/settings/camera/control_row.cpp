#include "ui/settings/camera/control_row.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>

namespace {

constexpr int mostPlaces = 10'000;  // of a slider: more than any screen has pixels

}  // namespace

ControlRow::ControlRow(const CameraControl& shown, const QString& caption, QGridLayout& grid)
    : QObject(grid.parentWidget()), control(shown) {
    const int row = grid.rowCount();
    if (control.Kind == CameraControl::Form::Switch) {
        box = new QCheckBox(caption);
        grid.addWidget(box, row, 1, 1, 2);
        connect(box, &QCheckBox::toggled, this, [this](bool on) { Change(on ? 1 : 0); });
    } else {
        auto* label = new QLabel(caption);
        grid.addWidget(label, row, 0);
        if (control.Kind == CameraControl::Form::Menu)
            MakeMenu(grid, row);
        else
            MakeNumber(grid, row);
        label->setBuddy(Widgets().first());
    }
    for (QWidget* widget : Widgets()) widget->setAccessibleName(caption);
    Show(control);
}

void ControlRow::MakeNumber(QGridLayout& grid, int row) {
    slider = new QSlider(Qt::Horizontal);
    slider->setRange(0, PlaceOf(control.Most));
    slider->setPageStep(std::max(1, slider->maximum() / 10));
    constexpr int leastWidth = 160;
    slider->setMinimumWidth(leastWidth);
    number = new QSpinBox;
    number->setRange(control.Least, control.Most);
    number->setSingleStep(control.Step);
    number->setKeyboardTracking(false);
    grid.addWidget(slider, row, 1);
    grid.addWidget(number, row, 2);
    connect(slider, &QSlider::valueChanged, this, [this](int place) { Change(ValueAt(place)); });
    connect(number, &QSpinBox::valueChanged, this, &ControlRow::Change);
}

void ControlRow::MakeMenu(QGridLayout& grid, int row) {
    list = new QComboBox;
    for (const auto& [value, name] : control.Choices) list->addItem(name, value);
    grid.addWidget(list, row, 1, 1, 2);
    connect(list, &QComboBox::activated, this, [this] { Change(list->currentData().toInt()); });
}

QList<QWidget*> ControlRow::Widgets() const {
    QList<QWidget*> widgets;
    for (QWidget* widget : std::initializer_list<QWidget*>{slider, number, list, box})
        if (widget) widgets << widget;
    return widgets;
}

// Ranges may be as wide as numbers go.
int ControlRow::PlaceOf(int value) const {
    const qint64 steps = (qint64(control.Most) - control.Least) / control.Step;
    const qint64 place = (qint64(value) - control.Least) / control.Step;
    return static_cast<int>(steps <= mostPlaces ? place : place * mostPlaces / steps);
}

int ControlRow::ValueAt(int place) const {
    const qint64 steps = (qint64(control.Most) - control.Least) / control.Step;
    const qint64 step = steps <= mostPlaces ? place : place * steps / mostPlaces;
    return static_cast<int>(control.Least + step * control.Step);
}

void ControlRow::Change(int value) {
    control.Value = value;
    Show(control);
    emit Changed(control.Id, value);
}

void ControlRow::Show(const CameraControl& now) {
    control.Value = now.Value;
    control.Adjustable = now.Adjustable;
    const QSignalBlocker quietSlider(slider);
    const QSignalBlocker quietNumber(number);
    const QSignalBlocker quietBox(box);
    if (slider) slider->setValue(PlaceOf(control.Value));
    if (number) number->setValue(control.Value);
    if (box) box->setChecked(control.Value != 0);
    if (list) list->setCurrentIndex(list->findData(control.Value));
    for (QWidget* widget : Widgets()) widget->setEnabled(control.Adjustable);
}
