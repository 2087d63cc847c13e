#pragma once

#include "ui/settings/background.h"
#include "ui/settings/frm_pfad.h"
#include "ui/settings/settings_window.h"

class PathField;
class QCheckBox;
class QComboBox;
class QLabel;
struct ArchiveSum;

// The archive: where copies of the pictures are kept, under which names, how many and for how long,
// and what room that takes.
class frmArchive : public SettingsWindow {
    Q_OBJECT

  public:
    frmArchive(const Surroundings& surroundings, QWidget* parent);

    QCheckBox* chkArchive;
    PathField* txtFolder;
    QLabel* lblMissing;  // that the folder is missing; empty otherwise
    QComboBox* cbNames;
    QPushButton* btnOther;  // shown while files with the chosen names cannot exist
    QLabel* lblName;        // what a name looks like
    QLabel* lblSpace;
    frmPfad Chooser;

  protected:
    void ShowSettings() override;
    void hideEvent(QHideEvent* event) override;

  private:
    void LayOut();
    void ShowNames();
    void LookAtFolder();
    [[nodiscard]] QString Folder() const;
    [[nodiscard]] QString SpaceText(const ArchiveSum& sum) const;

    Background background;
    QCheckBox* chkFolders;
};
