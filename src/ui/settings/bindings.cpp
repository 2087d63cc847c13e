#include "ui/settings/bindings.h"

#include "core/settings/setting_table.h"
#include "texts/texts.h"
#include "ui/widgets/number_box.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QRegularExpression>

#include <algorithm>

namespace {

const QString dots = QStringLiteral("…");

QMetaProperty PropertyOf(const QWidget& control) {
    const QMetaObject& about = *control.metaObject();
    const QMetaProperty user = about.userProperty();
    const bool list = qstrcmp(user.name(), "currentText") == 0;
    return list ? about.property(about.indexOfProperty("currentIndex")) : user;
}

// "3Pic" is one of "#Pic".
const SettingRow& RowOf(const Binding& binding) {
    static const QRegularExpression number(QStringLiteral("\\d+"));
    return SettingRowOf(binding.Section, QString(binding.Key).replace(number, "#"));
}

// What is not to be saved: a text that its setting does not take.
bool IsUnfinished(const Binding& binding, const QWidget& control) {
    const auto* line = qobject_cast<const QLineEdit*>(&control);
    return line && !binding.Key.isEmpty() && !RowOf(binding).Allows(line->text());
}

QString DefaultOf(const Binding& binding) {
    return binding.Missing.isEmpty() ? RowOf(binding).Default : binding.Missing;
}

int InRange(const SettingRow& row, int number) {
    if (!row.HasRange() || (number >= row.Least && number <= row.Most)) return number;
    return row.Else == Outside::Nearest ? std::clamp(number, row.Least, row.Most)
           : row.Else == Outside::Most  ? row.Most
                                        : ValLong(row.Default);
}

void SetNumber(QWidget& control, const QMetaProperty& property, int number) {
    const auto* list = qobject_cast<const QComboBox*>(&control);
    // A place that the list does not have.
    const bool none = list && (number < 0 || number >= list->count());
    property.write(&control, none ? 0 : number);
}

QString ValueOf(QWidget& control) {
    // What is being typed counts.
    if (auto* number = qobject_cast<QSpinBox*>(&control)) number->interpretText();
    const QVariant value = PropertyOf(control).read(&control);
    if (value.typeId() == QMetaType::Bool) return value.toBool() ? "1" : "0";
    return value.toString();
}

void SetRange(NumberBox& number, const Binding& binding) {
    const SettingRow& row = RowOf(binding);
    number.setRange(row.Least, row.Most);
    number.SetUsual(DefaultOf(binding).toInt());
}

void AddLines(QComboBox& list, int count) {
    for (int i = 0; i < count; ++i) list.addItem(QString());
    if (list.sizeAdjustPolicy() != QComboBox::AdjustToContentsOnFirstShow) return;
    // Other languages have longer lines, which are to be read whole.
    list.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list.setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

}  // namespace

Bindings::Bindings(const Texts& ownWords, const QString& ownSection)
    : words(ownWords), section(ownSection) {}

void Bindings::Add(QWidget* control, const Binding& binding, QLabel* caption) {
    Bound bound{control, caption, binding};
    if (binding.Text.isEmpty()) bound.What.Text = binding.Key;
    if (binding.Help.isEmpty()) bound.What.Help = bound.What.Text + "Help";
    control->setObjectName(binding.Key.isEmpty() ? binding.Text : binding.Key);
    if (caption && !qobject_cast<QLabel*>(control)) caption->setBuddy(control);
    auto* number = qobject_cast<NumberBox*>(control);
    if (number && !binding.Key.isEmpty()) SetRange(*number, binding);
    if (auto* list = qobject_cast<QComboBox*>(control)) AddLines(*list, binding.Items);
    const QMetaMethod changed = PropertyOf(*control).notifySignal();
    if (changed.isValid())
        connect(control, changed, this, metaObject()->method(metaObject()->indexOfSlot("Note()")));
    all << bound;
}

QGroupBox* Bindings::Frame(const QString& title) {
    auto* frame = new QGroupBox;
    all << Bound{frame, nullptr, {.Text = title}};
    return frame;
}

QString Bindings::Text(const QString& key) const {
    return words.Get(section, key);
}

void Bindings::ShowTexts() {
    for (const Bound& bound : std::as_const(all)) ShowText(bound);
    emit TextsShown();
}

void Bindings::ShowText(const Bound& bound) const {
    const QString text = bound.What.Caption ? bound.What.Caption() : Text(bound.What.Text);
    if (auto* frame = qobject_cast<QGroupBox*>(bound.Control)) {
        frame->setTitle(text);
        return;
    }
    auto* label = bound.Caption ? bound.Caption : qobject_cast<QLabel*>(bound.Control);
    if (label) label->setText(text);
    if (label == bound.Control) return;
    auto* button = qobject_cast<QAbstractButton*>(bound.Control);
    if (button && !label && button->text() != dots) button->setText(text);
    bound.Control->setAccessibleName(text.trimmed());
    bound.Control->setToolTip(Text(bound.What.Help));
    if (auto* list = qobject_cast<QComboBox*>(bound.Control))
        for (int i = 0; i < bound.What.Items; ++i)
            list->setItemText(i, Text(bound.What.Text + QString::number(i)));
}

void Bindings::ShowSettings(const QString& file) {
    showing = true;
    for (const Bound& bound : std::as_const(all))
        if (!bound.What.Key.isEmpty()) ShowSetting(bound, file);
    showing = false;
    ApplyEnabled();
}

void Bindings::ShowSetting(const Bound& bound, const QString& file) {
    QString value = ReadSetting(file, bound.What.Section, bound.What.Key);
    if (!RowOf(bound.What).Counts(value)) value = DefaultOf(bound.What);
    const QMetaProperty property = PropertyOf(*bound.Control);
    if (bound.What.Show)
        bound.What.Show(value);
    else if (property.typeId() == QMetaType::Bool)
        property.write(bound.Control, Val(value) != 0);
    else if (property.typeId() == QMetaType::Int)
        SetNumber(*bound.Control, property, InRange(RowOf(bound.What), ValLong(value)));
    else
        property.write(bound.Control, value);
}

QList<ProfileEntry> Bindings::Entries() const {
    QList<ProfileEntry> entries;
    for (const Bound& bound : all)
        if (!bound.What.Key.isEmpty())
            entries << ProfileEntry{
                bound.What.Section, bound.What.Key,
                bound.What.Value ? bound.What.Value() : ValueOf(*bound.Control)};
    return entries;
}

QWidget* Bindings::Unfinished() const {
    const auto found = std::find_if(all.begin(), all.end(), [](const Bound& bound) {
        return IsUnfinished(bound.What, *bound.Control);
    });
    return found == all.end() ? nullptr : found->Control;
}

void Bindings::SetTabOrder(QWidget* behind) const {
    QWidget* last = nullptr;
    for (const Bound& bound : all) {
        if (bound.Control->focusPolicy() == Qt::NoFocus) continue;
        if (last) QWidget::setTabOrder(last, bound.Control);
        last = bound.Control;
    }
    if (last) QWidget::setTabOrder(last, behind);
}

void Bindings::ApplyEnabled() const {
    for (const Bound& bound : all) {
        if (!bound.What.Enabled) continue;
        const bool on = bound.What.Enabled();
        bound.Control->setEnabled(on);
        if (bound.Caption) bound.Caption->setEnabled(on);
    }
}

void Bindings::Note() {
    if (showing) return;
    ApplyEnabled();
    emit Edited();
}
