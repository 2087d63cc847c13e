#include "ui/settings/camera/frm_cam.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "ui/settings/camera/path_field.h"
#include "ui/texts/languages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>

frmCam::frmCam(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent)
    : SettingsWindow(surroundings, "frmCam", parent),
      Chooser(surroundings.Core, surroundings.Words, parent),
      Sources(surroundings, parent),
      Format(surroundings, parent),
      Picture(surroundings, parent),
      languages(ownLanguages) {
    Lay();
    Connect();
    Finish();
    // The separator at the end needs room too.
    for (PathField* field : {Text5, asFlatTextBox1}) field->setMaxLength(field->maxLength() - 1);
}

void frmCam::Connect() {
    connect(cbDriver, &QComboBox::activated, this, [this] {
        // Events that wait come first: opening a camera may take a moment.
        QMetaObject::invokeMethod(this, &frmCam::ChooseDriver, Qt::QueuedConnection);
    });
    for (QCheckBox* option : {chkPreview, chkStretch, chkCenter})
        connect(option, &QCheckBox::clicked, this, &frmCam::ShowChoices);
    connect(&Core(), &Program::DriversChanged, this, &frmCam::ShowDrivers);
    connect(&Core(), &Program::SettingsLoaded, this, &frmCam::KeepChoices);
    connect(Text5, &PathField::ChooserWanted, this, [this] { OpenChooser(false); });
    connect(asFlatTextBox1, &PathField::ChooserWanted, this, [this] { OpenChooser(true); });
    connect(&Chooser, &frmPfad::Chosen, this, &frmCam::TakeFolder);
    connect(asFlatTextBox1, &QLineEdit::editingFinished, this, &frmCam::LookForArchive);
    connect(asFlatCheck1, &QCheckBox::clicked, this, &frmCam::LookForArchive);
    connect(btnSource, &QPushButton::clicked, &Sources, &CameraSources::Open);
    connect(btnFormat, &QPushButton::clicked, &Format, &CameraFormat::Open);
    connect(btnPicture, &QPushButton::clicked, &Picture, &CameraAdjusting::Open);
}

void frmCam::ShowSettings() {
    Core().RefreshDrivers();
    Core().PictureValues.PreviewLock = true;  // a picture made meanwhile must not switch it back
    driver = openedWith = Core().DriverText();
    changed = false;
    ShowDrivers();
    chkPreview->setChecked(Flag("Preview"));
    chkStretch->setChecked(Flag("StretchPreview"));
    chkCenter->setChecked(Flag("CenterVideo"));
    Text5->setText(Paths::Native(Setting("Path")));
    asFlatCheck1->setChecked(Flag("Archive"));
    asFlatTextBox1->setText(Paths::Native(Setting("ArchivePath")));
    LookForArchive();
    cbDriver->setFocus();
}

QString frmCam::PathText() const {
    return isVisible() ? Text5->text() : Paths::Native(Setting("Path"));
}

// A camera that the settings name and that is not there now stays the one of the settings.
QList<ProfileEntry> frmCam::Entries() const {
    const bool chosen = Core().State.DriverPresent && cbDriver->currentIndex() >= 0;
    return {Entry("Path", Paths::WithSeparator(Text5->text().trimmed())),
            Entry("Treiber", chosen ? cbDriver->currentText() : Setting("Treiber")),
            Entry("Preview", chkPreview->isChecked()),
            Entry("StretchPreview", chkStretch->isChecked()),
            Entry("CenterVideo", chkCenter->isChecked()),
            Entry("Archive", asFlatCheck1->isChecked()),
            Entry("ArchivePath", Paths::WithSeparator(asFlatTextBox1->text().trimmed()))};
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
    const bool installed = present && Core().ezVidCap1.InstalledSelected();
    for (QPushButton* button : {btnFormat, btnPicture}) button->setEnabled(installed);
    btnFormat->setToolTip(Text(installed ? QString("btnFormatHelp") : "OnlyInstalled"));
    btnPicture->setToolTip(Text(installed ? QString("btnPictureHelp") : "OnlyInstalled"));
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
    Chooser.reject();
    for (SettingsWindow* window :
         std::initializer_list<SettingsWindow*>{&Sources, &Format, &Picture})
        if (window->isVisible()) window->reject();
}

// A click into the field of the pictures leaves the mode as it is.
void frmCam::OpenChooser(bool forArchive) {
    if (forArchive) Core().State.PathForArchive = true;
    Chooser.Open();
}

void frmCam::TakeFolder(const QString& folder) {
    const bool forArchive = Core().State.PathForArchive;
    Core().State.PathForArchive = false;
    (forArchive ? asFlatTextBox1 : Text5)->setText(folder);
    (forArchive ? asFlatTextBox1 : Text5)->setFocus();
    LookForArchive();
}

// Copies that cannot be made are left out without a word, so it is said here.
void frmCam::LookForArchive() {
    const QString typed = asFlatTextBox1->text().trimmed();
    if (!asFlatCheck1->isChecked()) {
        background.Run(
            [this]() -> std::function<void()> { return [this] { lblArchiveNote->clear(); }; });
        return;
    }
    const QString folder =
        Paths::Native(QDir(Core().ProgramFolder()).filePath(Paths::Native(typed)));
    const bool relative =
        !typed.isEmpty() && QDir::isRelativePath(QDir::fromNativeSeparators(typed));
    background.Run([this, typed, folder, relative]() -> std::function<void()> {
        const bool missing = typed.isEmpty() || (!relative && !QDir(folder).exists());
        return [this, missing] {
            lblArchiveNote->setText(missing ? Text("ArchiveMissing") : QString());
        };
    });
}
