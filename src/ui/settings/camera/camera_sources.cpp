#include "ui/settings/camera/camera_sources.h"

#include "camera/camera_list.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "platform/platform.h"
#include "ui/settings/camera/camera_address.h"
#include "ui/settings/camera/camera_view.h"
#include "ui/widgets/drop_target.h"

#include <QComboBox>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString cameraSection = "Cameras";
constexpr int mostCameras = 100;

void ShowEntry(QListWidgetItem& entry, const WrittenCamera& camera) {
    const QString address = CameraAddress::WithoutSecrets(camera.Address);
    entry.setText(camera.Name + " – " + address);
    entry.setToolTip(address);
}

}  // namespace

CameraSources::CameraSources(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "CameraSources", parent),
      lstCameras(new QListWidget),
      btnAdd(new QPushButton),
      btnRemove(new QPushButton),
      btnTry(new QPushButton),
      trial(surroundings.Core.Wait, noDevices) {
    AddControls();
    LayOut();
    Connect();
    Finish();
}

// In the order of the Tab key.
void CameraSources::AddControls() {
    Controls.Add(lstCameras, {.Text = "List"});
    Controls.Add(btnAdd, {.Text = "Add"});
    Controls.Add(btnRemove, {.Text = "Remove"});
    Form = new CameraForm(Controls);
    Controls.Add(btnTry, {.Text = "Try"});
    Live = new CameraView(trial, Words());
}

void CameraSources::LayOut() {
    auto* left = new QVBoxLayout;
    left->addWidget(lstCameras, 1);
    auto* change = new QHBoxLayout;
    change->addWidget(btnAdd);
    change->addWidget(btnRemove);
    change->addStretch(1);
    left->addLayout(change);
    auto* right = new QVBoxLayout;
    right->addWidget(Form);
    auto* attempt = new QHBoxLayout;
    attempt->addWidget(btnTry);
    attempt->addStretch(1);
    right->addLayout(attempt);
    right->addWidget(Live, 1);
    auto* both = new QHBoxLayout;
    constexpr int gap = 12;
    both->addLayout(left, 1);
    both->addSpacing(gap);
    both->addLayout(right, 1);
    Body().addLayout(both);
    constexpr int letters = 38;  // of a name and an address
    lstCameras->setMinimumWidth(fontMetrics().averageCharWidth() * letters);
    lstCameras->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // long ones end in dots
}

void CameraSources::Connect() {
    connect(lstCameras, &QListWidget::currentRowChanged, this, &CameraSources::ShowMarked);
    connect(btnAdd, &QPushButton::clicked, this, [this] { AddAddress("rtsp://"); });
    connect(btnRemove, &QPushButton::clicked, this, &CameraSources::Remove);
    new DropTarget(lstCameras, DropTarget::Takes::Addresses,
                   [this](const QStringList& addresses) { AddAddress(addresses.first()); });
    connect(btnTry, &QPushButton::clicked, this, &CameraSources::Try);
    connect(Form, &CameraForm::Changed, this, &CameraSources::TakeForm);
    // The programs' own list of cameras follows the settings.
    connect(this, &SettingsWindow::Saved, &Core(), &Program::RefreshDrivers);
}

void CameraSources::ShowSettings() {
    cameras.clear();
    for (const QString& line : ::LoadSettings(Core().SettingsFile()).Cameras)
        cameras << WrittenCamera::FromLine(line);
    ShowList(0);
    lstCameras->setFocus();
}

void CameraSources::ShowList(int marked) {
    const QSignalBlocker quiet(lstCameras);
    lstCameras->clear();
    for (const WrittenCamera& camera : std::as_const(cameras)) {
        lstCameras->addItem(QString());
        ShowEntry(*lstCameras->item(lstCameras->count() - 1), camera);
    }
    lstCameras->setCurrentRow(qMin<int>(marked, static_cast<int>(cameras.size()) - 1));
    ShowMarked();
}

int CameraSources::Marked() const {
    return lstCameras->currentRow();
}

void CameraSources::ShowMarked() {
    const bool any = Marked() >= 0;
    EndTrial();
    lblNote->clear();
    Form->Show(any ? cameras[Marked()] : WrittenCamera{.Address = "rtsp://"});
    for (QWidget* widget : std::initializer_list<QWidget*>{Form, btnTry, btnRemove})
        widget->setEnabled(any);
    btnAdd->setEnabled(cameras.size() < mostCameras);
}

void CameraSources::TakeForm() {
    if (Marked() < 0) return;
    EndTrial();
    cameras[Marked()] = Form->Camera();
    ShowEntry(*lstCameras->currentItem(), cameras[Marked()]);
}

void CameraSources::AddAddress(const QString& address) {
    if (cameras.size() >= mostCameras) return;
    WrittenCamera camera = WrittenCamera::FromLine(FreshName() + u'|' + address);
    camera.FormerName.clear();
    cameras << camera;
    ShowList(static_cast<int>(cameras.size()) - 1);
    Form->txtName->setFocus();
    Form->txtName->selectAll();
}

void CameraSources::Remove() {
    cameras.removeAt(Marked());
    ShowList(Marked());
    if (Marked() < 0) btnAdd->setFocus();
}

QString CameraSources::FreshName() const {
    for (int number = 1;; ++number) {
        const QString name = Text("NewName").arg(number);
        if (std::ranges::none_of(cameras, [&](const auto& camera) { return camera.Name == name; }))
            return name;
    }
}

void CameraSources::Try() {
    if (!Fits(Marked())) return;
    lblNote->clear();
    EndTrial();
    trial.SetCameras({cameras[Marked()].Line()});
    trial.SetDriverIndex(0);
    trial.SetPreview(true);
    Live->Begin(true);
}

void CameraSources::EndTrial() {
    trial.SetPreview(false);
    trial.SetDriverIndex(-1);
    Live->Begin(false);
}

void CameraSources::hideEvent(QHideEvent* event) {
    SettingsWindow::hideEvent(event);
    if (!event->spontaneous()) EndTrial();
}

bool CameraSources::NameTaken(int index) const {
    const QString& name = cameras[index].Name;
    for (int i = 0; i < index; ++i)
        if (cameras[i].Name == name) return true;
    const QList<CaptureDevice> installed = Core().System().Cameras->List();
    return std::ranges::any_of(installed, [&](const auto& device) { return device.Name == name; });
}

QString CameraSources::FaultOf(const WrittenCamera& camera, QWidget*& field) const {
    field = Form->txtName;
    if (camera.Name.isEmpty()) return Text("NameMissing");
    if (camera.Name.contains(u'|')) return Text("NameBar");
    field = Form->txtAddress;
    const QString fault = camera.AddressFault();
    return fault.isEmpty() ? fault : Text(fault);
}

bool CameraSources::Fits(int index) {
    QWidget* field = nullptr;
    QString why = FaultOf(cameras[index], field);
    if (why.isEmpty() && NameTaken(index)) {
        why = Text("NameTaken").arg(cameras[index].Name);
        field = Form->txtName;
    }
    if (why.isEmpty()) return true;
    if (Marked() != index) lstCameras->setCurrentRow(index);
    Refuse(*field, why);
    return false;
}

bool CameraSources::Check() {
    for (int i = 0; i < cameras.size(); ++i)
        if (!Fits(i)) return false;
    return true;
}

// The rest of the list is ended by an empty entry, whatever stood there before. The camera in use
// stays the camera in use under its new name.
QList<ProfileEntry> CameraSources::Entries() const {
    QList<ProfileEntry> entries;
    const QString inUse = Setting("Treiber");
    QString renamed = inUse;
    for (const WrittenCamera& camera : cameras) {
        entries << ProfileEntry{cameraSection, "Cam" + QString::number(entries.size()),
                                camera.Line()};
        if (!inUse.isEmpty() && camera.FormerName == inUse) renamed = camera.Name;
    }
    entries << ProfileEntry{cameraSection, "Cam" + QString::number(entries.size()), QString()};
    if (renamed != inUse) entries << Entry("Treiber", renamed);
    return entries;
}
