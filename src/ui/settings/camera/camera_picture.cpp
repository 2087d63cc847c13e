#include "ui/settings/camera/camera_picture.h"

#include "core/program.h"
#include "picture/camera_adjustments.h"
#include "ui/settings/camera/control_row.h"
#include "ui/settings/camera/live_picture.h"

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

CameraPicture::CameraPicture(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "CameraPicture", parent),
      Live(new LivePicture(surroundings.Core.ezVidCap1, surroundings.Words)),
      btnDefaults(new QPushButton),
      btnDriver(new QPushButton),
      lblState(new QLabel) {
    Lay();
    connect(btnDefaults, &QPushButton::clicked, this, [this] {
        QList<CameraControl> controls;
        for (const ControlRow* row : std::as_const(rows)) controls << row->Control();
        SetAll(controls, &CameraControl::Default);
    });
    connect(btnDriver, &QPushButton::clicked, this, &CameraPicture::ShowDriverPages);
    connect(&Core(), &Program::DriversChanged, this, &CameraPicture::LeaveOtherCamera);
    connect(&Core(), &Program::SettingsLoaded, this, &CameraPicture::Watch);
    Finish();
}

void CameraPicture::Lay() {
    lblState->setWordWrap(true);
    lblState->setTextFormat(Qt::PlainText);
    auto* column = new QVBoxLayout;
    grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
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

void CameraPicture::ShowSettings() {
    const auto plugged = Core().ezVidCap1.InstalledDevice();
    device = plugged.value_or(CaptureDevice());
    camera = Core().DriverText();
    // It may not have been opened since it was plugged in.
    if (device.Adjust)
        device.Adjust(device.Address,
                      CameraAdjustments::Of(Core().State.Values.CameraControls, camera));
    ReadControls();
    btnDriver->setVisible(Core().System().Controls->HasOwnPages(device));
    Live->Begin(true);
    Core().ezVidCap1.SetPreview(true);
    if (!rows.isEmpty()) rows.first()->Widgets().first()->setFocus();
}

void CameraPicture::ReadControls() {
    before =
        device.Address.isEmpty() ? QList<CameraControl>() : Core().System().Controls->List(device);
    MakeRows();
    lblState->setText(rows.isEmpty() ? Text("Nothing").arg(camera) : QString());
    btnDefaults->setEnabled(!rows.isEmpty());
}

void CameraPicture::MakeRows() {
    qDeleteAll(rows);
    rows.clear();
    QWidget* last = nullptr;
    for (const CameraControl& control : std::as_const(before)) {
        auto* row = new ControlRow(Translated(control), Caption(control), *grid, this);
        connect(row, &ControlRow::Changed, this, &CameraPicture::Set);
        rows << row;
        for (QWidget* widget : row->Widgets()) {
            if (last) setTabOrder(last, widget);
            last = widget;
        }
    }
    if (last) setTabOrder(last, btnDefaults);
    setTabOrder(btnDefaults, btnDriver);
    setTabOrder(btnDriver, btnSave);
    SettingsWindow::ShowTexts();
}

QString CameraPicture::Caption(const CameraControl& control) const {
    const QString known = Words().Get(names, control.Id);
    const QString name = known.startsWith(u'?') ? control.Name : known;
    const bool inFront = control.Kind != CameraControl::Form::Switch;
    return QString(name).replace("&", "&&") + (inFront ? QString(u':') : QString());
}

// The choices that cameras have in common; others stay in the driver's words.
CameraControl CameraPicture::Translated(const CameraControl& control) const {
    CameraControl translated = control;
    for (auto& [value, name] : translated.Choices) {
        const QString known = Words().Get(names, control.Id + QString::number(value));
        if (!known.startsWith(u'?')) name = known;
    }
    return translated;
}

void CameraPicture::Set(const QString& id, int value) {
    const bool taken = Core().System().Controls->Set(device, {id, value});
    lblState->setText(taken ? QString() : Text("Refused"));
    const auto row =
        std::ranges::find_if(rows, [&id](const auto* r) { return r->Control().Id == id; });
    // A switch may rule other controls; a number rules none, and moves fast.
    if (!taken || !IsNumber((*row)->Control())) RefreshRows();
}

void CameraPicture::RefreshRows() {
    const QList<CameraControl> now = Core().System().Controls->List(device);
    for (ControlRow* row : std::as_const(rows)) {
        const auto found = std::ranges::find(now, row->Control().Id, &CameraControl::Id);
        if (found != now.end()) row->Show(*found);
    }
}

// Numbers before the switches and behind them: some take a value only while their automatic is off,
// and it may be off now or only then.
void CameraPicture::SetAll(const QList<CameraControl>& controls, int CameraControl::*value) {
    for (const bool numbers : {true, false, true})
        for (const CameraControl& control : controls)
            if (IsNumber(control) == numbers)
                (void)Core().System().Controls->Set(device, {control.Id, control.*value});
    RefreshRows();
}

// What closes this window meanwhile, such as another camera, does not close the driver's.
void CameraPicture::ShowDriverPages() {
    Core().System().Controls->ShowOwnPages(device, winId());
    RefreshRows();
    if (!isVisible()) GiveBack();
}

void CameraPicture::Watch() {
    if (isVisible()) Core().ezVidCap1.SetPreview(true);
}

// What belongs to one camera must not be saved for another.
void CameraPicture::LeaveOtherCamera() {
    if (isVisible() && Core().DriverText() != camera) reject();
}

void CameraPicture::reject() {
    const bool shown = isVisible();
    SettingsWindow::reject();
    if (shown) GiveBack();
}

// What an automatic has chosen is its own concern, whatever it has chosen since.
void CameraPicture::GiveBack() {
    QList<CameraControl> former;
    for (const ControlRow* row : std::as_const(rows)) {
        const auto found = std::ranges::find(before, row->Control().Id, &CameraControl::Id);
        if (found->Adjustable && found->Value != row->Control().Value) former << *found;
    }
    if (!former.isEmpty()) SetAll(former, &CameraControl::Value);
}

void CameraPicture::hideEvent(QHideEvent* event) {
    SettingsWindow::hideEvent(event);
    if (event->spontaneous()) return;
    Live->Begin(false);
    Core().ezVidCap1.SetPreview(Core().State.Values.Preview);
}

// The rest of the list is ended by an empty entry, whatever stood there before.
QList<ProfileEntry> CameraPicture::Entries() const {
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

void CameraPicture::ShowTexts() {
    btnDefaults->setText(Text("Defaults"));
    btnDefaults->setToolTip(Text("btnDefaultsHelp"));
    btnDriver->setText(Text("Driver"));
    btnDriver->setToolTip(Text("btnDriverHelp"));
    Live->ShowTexts();
    if (isVisible()) {
        // New rows in the other language, with the values as they are.
        const QList<CameraControl> opened = before;
        ReadControls();
        before = opened;
    }
    SettingsWindow::ShowTexts();
}
