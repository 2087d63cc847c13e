#include "ui/settings/camera/camera_adjusting.h"

#include "camera/camera_adjustments.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "platform/platform.h"
#include "ui/settings/camera/camera_view.h"
#include "ui/settings/camera/control_row.h"

#include <QGridLayout>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace {

const QString names = "CameraControls";

bool IsNumber(const CameraControl& control) {
    return control.Kind == CameraControl::Form::Number;
}

}  // namespace

CameraAdjusting::CameraAdjusting(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "CameraAdjusting", parent),
      Live(new CameraView(surroundings.Core.ezVidCap1, surroundings.Words)),
      btnDefaults(new QPushButton),
      btnDriver(new QPushButton),
      lblState(new QLabel),
      column(new QVBoxLayout) {
    Controls.Add(btnDefaults, {.Text = "Defaults"});
    Controls.Add(btnDriver, {.Text = "Driver"});
    LayOut();
    connect(btnDefaults, &QPushButton::clicked, this, [this] {
        QList<CameraControl> controls;
        for (const ControlRow* row : std::as_const(rows)) controls << row->Control();
        SetAll(controls, &CameraControl::Default);
    });
    connect(btnDriver, &QPushButton::clicked, this, &CameraAdjusting::ShowDriverPages);
    connect(&Controls, &Bindings::TextsShown, this, [this] {
        if (isVisible()) MakeRows(CurrentControls());
    });
    connect(&Core(), &Program::DriversChanged, this, &CameraAdjusting::LeaveOtherCamera);
    connect(&Core(), &Program::SettingsLoaded, this, &CameraAdjusting::Watch);
    Finish();
}

void CameraAdjusting::LayOut() {
    lblState->setWordWrap(true);
    lblState->setTextFormat(Qt::PlainText);
    column->addWidget(lblState);
    column->addStretch(1);
    auto* below = new QHBoxLayout;
    below->addWidget(btnDefaults);
    below->addWidget(btnDriver);
    below->addStretch(1);
    column->addLayout(below);
    auto* both = new QHBoxLayout;
    constexpr int gap = 12;
    both->addWidget(Live, 1);
    both->addSpacing(gap);
    both->addLayout(column, 1);
    Body().addLayout(both);
}

void CameraAdjusting::ShowSettings() {
    const auto plugged = Core().ezVidCap1.InstalledDevice();
    device = plugged.value_or(CaptureDevice());
    camera = Core().DriverText();
    // It may not have been opened since it was plugged in.
    if (device.Adjust)
        device.Adjust(device.Address,
                      CameraAdjustments::Of(Core().State.Values.CameraControls, camera));
    before = CurrentControls();
    MakeRows(before);
    ShowTexts();  // gives the letters of the new captions out
    btnDriver->setVisible(Core().System().Controls->HasOwnPages(device));
    Live->Begin(true);
    Core().ezVidCap1.SetPreview(true);
    if (!rows.isEmpty()) rows.first()->Widgets().first()->setFocus();
}

QList<CameraControl> CameraAdjusting::CurrentControls() const {
    return device.Address.isEmpty() ? QList<CameraControl>()
                                    : Core().System().Controls->List(device);
}

// The Tab key comes to them first: new controls stand behind the last button, where it begins anew.
void CameraAdjusting::MakeRows(const QList<CameraControl>& controls) {
    delete panel;
    panel = new QWidget;
    column->insertWidget(0, panel);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins({});
    grid->setColumnStretch(1, 1);
    rows.clear();
    for (const CameraControl& control : controls) {
        rows << new ControlRow(Translated(control), Caption(control), *grid);
        connect(rows.last(), &ControlRow::Changed, this, &CameraAdjusting::Set);
    }
    lblState->setText(rows.isEmpty() ? Text("Nothing").arg(camera) : QString());
    btnDefaults->setEnabled(!rows.isEmpty());
}

QString CameraAdjusting::Caption(const CameraControl& control) const {
    const QString known = Words().Get(names, control.Id);
    const QString name = known.startsWith(u'?') ? control.Name : known;
    const bool inFront = control.Kind != CameraControl::Form::Switch;
    return QString(name).replace("&", "&&") + (inFront ? QString(u':') : QString());
}

// The choices that cameras have in common; others stay in the driver's words.
CameraControl CameraAdjusting::Translated(const CameraControl& control) const {
    CameraControl translated = control;
    for (auto& [value, name] : translated.Choices) {
        const QString known = Words().Get(names, control.Id + QString::number(value));
        if (!known.startsWith(u'?')) name = known;
    }
    return translated;
}

void CameraAdjusting::Set(const QString& id, int value) {
    const bool taken = Core().System().Controls->Set(device, {id, value});
    lblState->setText(taken ? QString() : Text("Refused"));
    const auto row =
        std::ranges::find_if(rows, [&id](const auto* r) { return r->Control().Id == id; });
    // A switch may rule other controls; a number rules none, and moves fast.
    if (!taken || !IsNumber((*row)->Control())) RefreshRows();
}

void CameraAdjusting::RefreshRows() {
    const QList<CameraControl> now = Core().System().Controls->List(device);
    for (ControlRow* row : std::as_const(rows)) {
        const auto found = std::ranges::find(now, row->Control().Id, &CameraControl::Id);
        if (found != now.end()) row->Show(*found);
    }
}

// Numbers before the switches and behind them: some take a value only while their automatic is off,
// and it may be off now or only then.
void CameraAdjusting::SetAll(const QList<CameraControl>& controls, int CameraControl::*value) {
    for (const bool numbers : {true, false, true})
        for (const CameraControl& control : controls)
            if (IsNumber(control) == numbers)
                (void)Core().System().Controls->Set(device, {control.Id, control.*value});
    RefreshRows();
}

// What closes this window meanwhile, such as another camera, does not close the driver's.
void CameraAdjusting::ShowDriverPages() {
    Core().System().Controls->ShowOwnPages(device, winId());
    RefreshRows();
    if (!isVisible()) GiveBack();
}

void CameraAdjusting::Watch() {
    if (isVisible()) Core().ezVidCap1.SetPreview(true);
}

// What belongs to one camera must not be saved for another.
void CameraAdjusting::LeaveOtherCamera() {
    if (isVisible() && Core().DriverText() != camera) reject();
}

void CameraAdjusting::reject() {
    const bool shown = isVisible();
    SettingsWindow::reject();
    if (shown) GiveBack();
}

// What an automatic has chosen is its own concern, whatever it has chosen since.
void CameraAdjusting::GiveBack() {
    QList<CameraControl> former;
    for (const ControlRow* row : std::as_const(rows)) {
        const auto found = std::ranges::find(before, row->Control().Id, &CameraControl::Id);
        if (found->Adjustable && found->Value != row->Control().Value) former << *found;
    }
    if (!former.isEmpty()) SetAll(former, &CameraControl::Value);
}

void CameraAdjusting::hideEvent(QHideEvent* event) {
    SettingsWindow::hideEvent(event);
    if (event->spontaneous()) return;
    Live->Begin(false);
    Core().ezVidCap1.SetPreview(Core().State.Values.Preview);
}

// The rest of the list is ended by an empty entry, whatever stood there before.
QList<ProfileEntry> CameraAdjusting::Entries() const {
    QList<CameraControlValue> values;
    for (const bool numbers : {false, true})
        for (const ControlRow* row : rows) {
            const CameraControl& control = row->Control();
            if (IsNumber(control) == numbers && control.Adjustable &&
                control.Value != control.Default)
                values << CameraControlValue{control.Id, control.Value};
        }
    const QStringList lines =
        CameraAdjustments::Replaced(Core().State.Values.CameraControls, camera, values);
    QList<ProfileEntry> entries;
    for (const QString& line : lines + QStringList(QString()))
        entries << ProfileEntry{"CameraControls", "Control" + QString::number(entries.size()),
                                line};
    return entries;
}
