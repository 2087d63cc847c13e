#pragma once

#include "ui/settings/settings_window.h"
#include "ui/texts/messages.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

class FtpAccessGroup;
class frmPage;
class Languages;
class OfflineGroup;
class QGroupBox;
class SettingsRows;
class TrialPanel;
struct ServerAccess;

// The settings of where and how pictures are published: server or folder, history, dial-up, offline
// picture, autostart; with a trial of the connection as it stands in the fields.
class frmFTP : public SettingsWindow {
    Q_OBJECT

  public:
    // languages: whose composed messages are shown.
    frmFTP(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent);

    TrialPanel* Trial;
    FtpAccessGroup* Access;
    OfflineGroup* Offline = nullptr;
    QCheckBox* chkHistory = new QCheckBox;
    NumberBox* txtHistory = new NumberBox;
    QCheckBox* chkDelete = new QCheckBox;
    QLineEdit* txtFileMode = new QLineEdit;
    QComboBox* cbQuality = new QComboBox;
    QComboBox* cbConnection = new QComboBox;
    QCheckBox* chkAnwahl = new QCheckBox;
    QCheckBox* chkAbwahl = new QCheckBox;
    QCheckBox* chkAutostart = new QCheckBox;
    QCheckBox* chkNotify = new QCheckBox;
    QPushButton* btnPage = new QPushButton;
    frmPage* Page;

    // The folder of the offline pictures as the window shows it, which a message names.
    [[nodiscard]] QString OfflinePath() const;

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    [[nodiscard]] bool Check() override;
    void hideEvent(QHideEvent* event) override;

  private:
    void LayOut();
    [[nodiscard]] QGroupBox* ExtendedFrame();
    void Connect();
    void ShowRows();
    // The system's dial-up entries, and the one that the settings name. One that is gone stays
    // shown, so that saving does not lose it; without a name the place in the list counts.
    void ShowConnections(const QString& name);
    [[nodiscard]] QString Connection() const;  // empty when there is none
    void ShowQuality();
    [[nodiscard]] int Quality() const;
    [[nodiscard]] bool CheckOffline();
    [[nodiscard]] std::optional<ServerAccess> WantedTrial();

    const Languages& languages;
    SettingsRows* extended = nullptr;
    bool qualityChosen = false;  // by the operator, since the window was opened
};
