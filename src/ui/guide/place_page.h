#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"
#include "ui/guide/guide_page.h"

class FtpAccessGroup;
class TrialPanel;

// The second page: a server or a folder of this computer. Next tries it first and goes on by itself
// when it works; otherwise the field that is wrong is marked, and a second Next goes on all the
// same, because a server may be down today.
class PlacePage : public GuidePage {
    Q_OBJECT

  public:
    explicit PlacePage(const SettingsWindow::Surroundings& surroundings);

    TrialPanel* Trial;
    FtpAccessGroup* Access;

    void ShowSettings() override;
    [[nodiscard]] QWidget* First() const override;
    [[nodiscard]] bool validatePage() override;
    [[nodiscard]] bool isComplete() const override;

  protected:
    void hideEvent(QHideEvent* event) override;

  private:
    [[nodiscard]] std::optional<ServerAccess> Wanted();
    void Note(ServerFault result);

    bool tried = false;  // what stands in the fields; how it ended was told
    bool works = false;
};
