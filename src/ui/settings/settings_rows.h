#pragma once

#include "ui/settings/bindings.h"

#include <QGridLayout>
#include <QHash>
#include <QWidget>

// Rows of a settings window, captions on the left and controls on the right, whose controls are
// bound as they are added.
class SettingsRows : public QGridLayout {
    Q_OBJECT

  public:
    // frame: whose layout this becomes, if any.
    explicit SettingsRows(Bindings& ownBindings, QWidget* frame = nullptr);

    // The next row. Options and buttons have it for themselves; `beside` stands at the right of
    // the control and is to be bound by the caller.
    void Add(QWidget* control, const Binding& binding, QWidget* beside = nullptr);
    void Add(QWidget* control, const QString& key) { Add(control, Binding{.Key = key}); }
    // A control that nobody else has to know.
    template <class Control>
    void Add(const Binding& binding) {
        Add(new Control, binding);
    }
    template <class Control>
    void Add(const QString& key) {
        Add<Control>(Binding{.Key = key});
    }
    // The same with the caption above the control, which gets the whole width.
    void AddBelow(QWidget* control, const Binding& binding, QWidget* beside = nullptr);
    // Words over the whole width.
    void AddNote(const Binding& binding);
    void AddSpace();
    // The same of what is bound by the caller.
    void AddLine(QLabel* caption, QWidget* control, QWidget* beside = nullptr);
    void AddWhole(QWidget* widget) { addWidget(widget, NextRow(), 0, 1, 2); }
    void AddWhole(QLayout* line) { addLayout(line, NextRow(), 0, 1, 2); }

    // Room that is left goes to this row instead of below the last one.
    void Stretch(QWidget* control);
    // Shows or hides a row with all that stands in it.
    void ShowRow(QWidget* control, bool shown);

  private:
    int NextRow();
    int RowOf(QWidget* control) const;

    int next = 0;
    QHash<QWidget*, QWidgetList> lines;  // what stands in the row of a control
    Bindings& bindings;
};
