#pragma once

#include "ui/settings/settings_window.h"
#include "ui/texts/messages.h"

class FtpAccessGroup;
class FtpExtendedGroup;
class Languages;
class OfflineGroup;
class TrialPanel;
struct TrialAccess;

// The settings of where and how pictures are published: server or folder, history, dial-up, offline
// picture, autostart; with a trial of the connection as it stands in the fields.
class frmFTP : public SettingsWindow {
    Q_OBJECT

  public:
    // languages: whose composed messages are shown.
    frmFTP(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent);

    FtpAccessGroup* Access;
    FtpExtendedGroup* Extended;
    OfflineGroup* Offline;
    TrialPanel* Trial;

    // The folder of the offline pictures as the window shows it, which a message names.
    [[nodiscard]] QString OfflinePath() const;

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    [[nodiscard]] bool Check() override;
    void ShowTexts() override;
    void hideEvent(QHideEvent* event) override;

  private:
    void LayOut();
    void SetTabOrder();
    void Connect();
    [[nodiscard]] bool CheckFolder();
    [[nodiscard]] bool CheckServer();
    [[nodiscard]] bool CheckOffline();
    [[nodiscard]] std::optional<TrialAccess> WantedTrial();
    [[nodiscard]] QString FullFolder() const;
    void ApplyAutostart();

    const Languages& languages;
};
