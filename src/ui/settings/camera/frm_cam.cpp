#include "ui/settings/camera/frm_cam.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "core/settings/work_folder.h"
#include "picture/archive/archive_names.h"
#include "picture/picture_state.h"
#include "ui/settings/camera/path_field.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/languages.h"
#include "ui/widgets/drop_target.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace {

// Its list is renewed when it is opened: a camera may have been plugged in meanwhile.
class DriverBox : public QComboBox {
  public:
    explicit DriverBox(Program& ownProgram) : program(ownProgram) {}
    void showPopup() override {
        program.RefreshDrivers();
        QComboBox::showPopup();
    }

  private:
    Program& program;
};

}  // namespace

frmCam::frmCam(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent)
    : SettingsWindow(surroundings, "frmCam", parent),
      cbDriver(new DriverBox(surroundings.Core)),
      chkPreview(new QCheckBox),
      chkStretch(new QCheckBox),
      chkCenter(new QCheckBox),
      btnSource(new QPushButton),
      btnFormat(new QPushButton),
      btnPicture(new QPushButton),
      Text5(new PathField),
      asFlatCheck1(new QCheckBox),
      asFlatTextBox1(new PathField),
      btnArchive(new QPushButton),
      lblArchiveNote(new QLabel),
      Chooser(surroundings.Words, parent),
      Sources(surroundings, parent),
      Format(surroundings, parent),
      Picture(surroundings, parent),
      Archive(surroundings, parent),
      languages(ownLanguages) {
    Body().addWidget(DriverFrame());
    Body().addWidget(PathFrame());
    Body().addStretch(1);
    Connect();
    Finish();
    // The separator at the end needs room too.
    for (PathField* field : {Text5, asFlatTextBox1}) field->setMaxLength(field->maxLength() - 1);
}

QGroupBox* frmCam::DriverFrame() {
    QGroupBox* frame = Controls.Frame("FrameDriver");
    auto* grid = new QGridLayout(frame);
    auto* list = new SettingsRows(Controls);
    list->Add(cbDriver, {.Key = "Treiber",
                         .Text = "Driver",
                         .Show = [this](const QString&) { ShowDrivers(); },
                         .Value = [this] { return WantedDriver(); }});
    grid->addLayout(list, 0, 0, 1, 2);
    const auto place = [&](QAbstractButton* button, int row, int column, const Binding& binding) {
        grid->addWidget(button, row, column);
        Controls.Add(button, binding);
    };
    const auto installed = [this] {
        return Core().State.DriverPresent && Core().ezVidCap1.InstalledSelected();
    };
    place(chkPreview, 1, 0, {.Key = "Preview"});
    place(chkStretch, 2, 0, {.Key = "StretchPreview", .Text = "Stretch"});
    place(chkCenter, 3, 0, {.Key = "CenterVideo", .Text = "Center"});
    place(btnSource, 1, 1, {.Text = "Source"});
    place(btnFormat, 2, 1, {.Text = "Format", .Enabled = installed});
    place(btnPicture, 3, 1, {.Text = "Picture", .Enabled = installed});
    grid->setColumnStretch(0, 1);
    return frame;
}

QWidget* frmCam::PathFrame() {
    auto* frame = new QWidget;
    auto* rows = new SettingsRows(Controls, frame);
    rows->AddBelow(Text5, {.Key = "Path", .Text = "ArchivePath"}, Text5->btnBrowse);
    Controls.Add(Text5->btnBrowse, {.Text = "BrowseHelp", .Help = "BrowseHelp"});
    rows->AddSpace();
    rows->Add(asFlatCheck1, {.Key = "Archive", .Text = "ArchiveOption"});
    auto* folder = new QHBoxLayout;
    folder->addWidget(asFlatTextBox1, 1);
    folder->addWidget(asFlatTextBox1->btnBrowse);
    rows->AddWhole(folder);
    Controls.Add(asFlatTextBox1, {.Key = "ArchivePath", .Text = "ArchiveFolder"});
    Controls.Add(asFlatTextBox1->btnBrowse, {.Text = "BrowseHelp", .Help = "BrowseHelp"});
    auto* more = new QHBoxLayout;
    more->addWidget(btnArchive);
    more->addStretch(1);
    rows->AddWhole(more);
    Controls.Add(btnArchive, {.Text = "MoreArchive"});
    rows->AddWhole(lblArchiveNote);
    lblArchiveNote->setWordWrap(true);
    lblArchiveNote->setTextFormat(Qt::PlainText);
    // What an empty field stands for.
    Text5->setPlaceholderText(WorkFolder::Usual(Core().ProgramFolder()));
    return frame;
}

void frmCam::Connect() {
    connect(cbDriver, &QComboBox::activated, this, [this] {
        // Events that wait come first: opening a camera may take a moment.
        QMetaObject::invokeMethod(this, &frmCam::ChooseDriver, Qt::QueuedConnection);
    });
    for (QCheckBox* option : {chkPreview, chkStretch, chkCenter})
        connect(option, &QCheckBox::clicked, this, &frmCam::ShowChoices);
    connect(&Controls, &Bindings::TextsShown, this, &frmCam::ShowComposedTexts);
    connect(&Core(), &Program::DriversChanged, this, &frmCam::ShowDrivers);
    connect(&Core(), &Program::SettingsLoaded, this, &frmCam::KeepChoices);
    connect(Text5, &PathField::ChooserWanted, this, [this] { OpenChooser(false); });
    connect(asFlatTextBox1, &PathField::ChooserWanted, this, [this] { OpenChooser(true); });
    connect(&Chooser, &frmPfad::Chosen, this, &frmCam::TakeFolder);
    connect(asFlatTextBox1, &QLineEdit::editingFinished, this, &frmCam::LookForArchive);
    connect(asFlatCheck1, &QCheckBox::clicked, this, &frmCam::LookForArchive);
    connect(btnArchive, &QPushButton::clicked, &Archive, &frmArchive::Open);
    connect(&Archive, &SettingsWindow::Saved, this, &frmCam::TakeArchive);
    connect(btnSource, &QPushButton::clicked, &Sources, &CameraSources::Open);
    new DropTarget(cbDriver, DropTarget::Takes::Addresses,
                   [this](const QStringList& addresses) { AddCamera(addresses.first()); });
    connect(btnFormat, &QPushButton::clicked, &Format, &CameraFormat::Open);
    connect(btnPicture, &QPushButton::clicked, &Picture, &CameraAdjusting::Open);
}

void frmCam::AddCamera(const QString& address) {
    Sources.Open();
    Sources.AddAddress(address);
}

void frmCam::ShowComposedTexts() {
    for (const PathField* field : {Text5, asFlatTextBox1})
        field->btnBrowse->setAccessibleName(Text("BrowseHelp") + ": " + field->accessibleName());
    ShowDrivers();
    LookForArchive();
}

void frmCam::ShowSettings() {
    Core().RefreshDrivers();
    Core().PictureValues.PreviewLock = true;  // a picture made meanwhile must not switch it back
    driver = openedWith = Core().DriverText();
    changed = false;
    SettingsWindow::ShowSettings();
    LookForArchive();
    cbDriver->setFocus();
}

QString frmCam::PathText() const {
    return isVisible() ? Text5->text() : Paths::Native(Setting("Path"));
}

// The folder of the pictures comes first.
QList<ProfileEntry> frmCam::Entries() const {
    QList<ProfileEntry> entries = SettingsWindow::Entries();
    const auto path = std::ranges::find(entries, QString("Path"), &ProfileEntry::Key);
    std::rotate(entries.begin(), path, path + 1);
    return entries;
}

// A camera that the settings name and that is not there now stays the one of the settings.
QString frmCam::WantedDriver() const {
    const bool chosen = Core().State.DriverPresent && cbDriver->currentIndex() >= 0;
    return chosen ? cbDriver->currentText() : Setting("Treiber");
}

// Empty is the program's own folder for it. Where the archive is to be is nobody's concern here.
bool frmCam::Check() {
    const QString typed = Text5->text().trimmed();
    if (typed.isEmpty() || QDir(SettingFolder(Core().ProgramFolder(), typed)).exists()) return true;
    Boxes().Show("Stillpost", languages.Messages().MsgCamPathMissing, MessageBoxes::Icon::Critical);
    Refuse(*Text5, Text("PathMissing").arg(typed));
    return false;
}

// The list is the program's, so is the choice in it: the main window has the same one.
void frmCam::ShowDrivers() {
    cbDriver->clear();
    const bool present = Core().State.DriverPresent;
    if (present)
        cbDriver->addItems(Core().DriverList());
    else
        cbDriver->addItem(Core().DriverText());
    cbDriver->setPlaceholderText(Text("NotConnected").arg(Setting("Treiber")));
    cbDriver->setCurrentIndex(present ? Core().DriverIndex() : 0);
    Controls.ApplyEnabled();
    const bool installed = btnFormat->isEnabled();
    btnFormat->setToolTip(Text(installed ? QString("FormatHelp") : "OnlyInstalled"));
    btnPicture->setToolTip(Text(installed ? QString("PictureHelp") : "OnlyInstalled"));
}

void frmCam::ChooseDriver() {
    if (!isVisible()) return;
    changed = true;
    driver = cbDriver->currentText();
    Core().SelectDriver(cbDriver->currentIndex());
}

void frmCam::ShowChoices() {
    changed = true;
    Core().ShowPreview(chkPreview->isChecked(), chkStretch->isChecked(), chkCenter->isChecked());
}

// Somebody else has loaded the settings while choices are open.
void frmCam::KeepChoices() {
    if (!isVisible() || !changed) return;
    const int wanted = static_cast<int>(Core().DriverList().indexOf(driver));
    if (wanted >= 0) Core().SelectDriver(wanted);
    ShowChoices();
}

void frmCam::reject() {
    SettingsWindow::reject();
    if (!changed) return;
    changed = false;
    // Settings that name no camera leave the one in use.
    Core().SelectDriver(static_cast<int>(Core().DriverList().indexOf(openedWith)));
    Core().LoadSettings();
}

void frmCam::hideEvent(QHideEvent* event) {
    SettingsWindow::hideEvent(event);
    if (event->spontaneous()) return;
    Core().PictureValues.PreviewLock = false;
    for (QDialog* window : std::initializer_list<QDialog*>{&Chooser, &Sources, &Format, &Picture})
        if (window->isVisible()) window->reject();
}

// A click into the field of the pictures leaves the mode as it is.
void frmCam::OpenChooser(bool forArchive) {
    if (forArchive) Core().State.PathForArchive = true;
    const bool archive = Core().State.PathForArchive;
    Chooser.Open(ChooserBegin(), archive ? frmPfad::Purpose::Archive : frmPfad::Purpose::Pictures);
}

QString frmCam::ChooserBegin() const {
    const bool archive = Core().State.PathForArchive;
    const QString written = Setting(archive ? QString("ArchivePath") : "Path");
    if (!written.isEmpty()) return SettingFolder(Core().ProgramFolder(), written);
    return archive ? QDir::homePath() : Core().State.Values.WorkPath;
}

void frmCam::TakeFolder(const QString& folder) {
    PathField& field = Core().State.PathForArchive ? *asFlatTextBox1 : *Text5;
    Core().State.PathForArchive = false;
    field.setText(folder);
    field.setFocus();
    LookForArchive();
}

// What was saved in the other window must not be undone by saving this one.
void frmCam::TakeArchive() {
    asFlatCheck1->setChecked(Flag("Archive"));
    asFlatTextBox1->SetFolder(Setting("ArchivePath"));
    LookForArchive();
}

// Copies of a relative folder are no trouble: it is created.
void frmCam::LookForArchive() {
    const bool wanted = asFlatCheck1->isChecked();
    const QString folder = QDir::fromNativeSeparators(asFlatTextBox1->text().trimmed());
    const bool named =
        Setting("ArchiveNames") == "iso" || SystemNamesExist(Core().PictureValues.Locale);
    background.Run([this, wanted, folder, named]() -> std::function<void()> {
        const bool there = !folder.isEmpty() &&
                           (QDir::isRelativePath(folder) || QDir(Paths::Native(folder)).exists());
        const QString note = !there  ? QString("ArchiveMissing")
                             : named ? QString()
                                     : "ArchiveNoNames";
        return [this, note = wanted ? note : QString()] {
            lblArchiveNote->setText(note.isEmpty() ? note : Text(note));
        };
    });
}
