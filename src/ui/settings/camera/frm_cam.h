#pragma once

#include "ui/settings/background.h"
#include "ui/settings/camera/camera_adjusting.h"
#include "ui/settings/camera/camera_format.h"
#include "ui/settings/camera/camera_sources.h"
#include "ui/settings/camera/frm_archive.h"
#include "ui/settings/frm_pfad.h"
#include "ui/settings/settings_window.h"

class Languages;
class PathField;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;

// The camera settings: which camera, its live preview, and where pictures are kept on this machine.
// Camera and preview change at once, so that their effect is seen; closing the window goes back to
// what the settings say.
class frmCam : public SettingsWindow {
    Q_OBJECT

  public:
    // ownLanguages outlives the window, as do the surroundings.
    frmCam(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent);

    QComboBox* cbDriver;
    QCheckBox* chkPreview;
    QCheckBox* chkStretch;
    QCheckBox* chkCenter;
    QPushButton* btnSource;
    QPushButton* btnFormat;
    QPushButton* btnPicture;
    PathField* Text5;
    QCheckBox* asFlatCheck1;
    PathField* asFlatTextBox1;
    QPushButton* btnArchive;  // everything else about the archive
    QLabel* lblArchiveNote;   // why nothing is archived; empty otherwise

    frmPfad Chooser;
    CameraSources Sources;
    CameraFormat Format;
    CameraAdjusting Picture;
    frmArchive Archive;  // opened from the menu as well

    // Opens the sources with one more camera of this address, to be looked at and saved there.
    void AddCamera(const QString& address);

    // What stands in Text5, or will when the window is opened.
    [[nodiscard]] QString PathText() const;

  public slots:
    // Closes without saving.
    void reject() override;

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    [[nodiscard]] bool Check() override;
    void hideEvent(QHideEvent* event) override;

  private:
    [[nodiscard]] QGroupBox* DriverFrame();
    [[nodiscard]] QWidget* PathFrame();
    void Connect();
    void ShowComposedTexts();
    void ShowDrivers();
    [[nodiscard]] QString WantedDriver() const;
    void ChooseDriver();
    void ShowChoices();
    void KeepChoices();
    void OpenChooser(bool forArchive);
    // Where the settings have the folder that it serves.
    [[nodiscard]] QString ChooserBegin() const;
    void TakeFolder(const QString& folder);
    void LookForArchive();
    void TakeArchive();

    const Languages& languages;
    Background background;
    QString openedWith;    // the camera in use when the window was opened
    QString driver;        // the one chosen since
    bool changed = false;  // something is other than the settings say
};
