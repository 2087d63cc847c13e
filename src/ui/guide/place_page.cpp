#include "ui/guide/place_page.h"

#include "base/status_hub.h"
#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/settings/ftp/trial_panel.h"

#include <QHideEvent>
#include <QLabel>
#include <QVBoxLayout>

PlacePage::PlacePage(const SettingsWindow::Surroundings& surroundings)
    : GuidePage(surroundings, "Place", "frmFTP"),
      Trial(new TrialPanel(Core().Wait, Core().Display, Words(), [this] { return Wanted(); })),
      Access(new FtpAccessGroup(Controls(), Words(), nullptr)) {
    Trial->Bind(Controls());
    Body().addWidget(Access);
    Body().addStretch(1);
    AddBelow(Trial);
    connect(Access, &FtpAccessGroup::Edited, this, [this] {
        tried = false;
        lblNote->clear();
        Trial->Clear();
    });
    connect(Trial, &TrialPanel::Begun, this, &QWizardPage::completeChanged);
    connect(Trial, &TrialPanel::Done, this, &PlacePage::Note);
    connect(Access, &FtpAccessGroup::RowsChanged, this, [this] { ShowTexts(Buttons()); });
    connect(Trial, &TrialPanel::OfferTaken, Access, &FtpAccessGroup::Take);
}

void PlacePage::ShowSettings() {
    GuidePage::ShowSettings();
    Access->AdoptWritten();
    tried = false;
    Trial->Clear();
}

QWidget* PlacePage::First() const {
    return Access->Local() ? Access->txtVerzeichnis : Access->txtServer;
}

bool PlacePage::isComplete() const {
    return !Trial->Running();
}

std::optional<ServerAccess> PlacePage::Wanted() {
    lblNote->clear();
    Access->AdoptTyped();
    const QString folder = Core().ProgramFolder();
    auto fault = Access->FindTrialFault(folder);
    if (!fault) fault = Access->FindFault(folder);
    if (fault) {
        Refuse(*fault->Field, fault->Note);
        return std::nullopt;
    }
    ServerAccess access = Access->Wanted(folder);
    access.DeleteFirst = Core().State.Values.Delete;
    access.DataFromAnywhere = Core().State.Values.DataFromAnywhere;
    return access;
}

bool PlacePage::validatePage() {
    if (!Wanted()) return false;
    if (tried) return true;
    works = false;
    // Takes its time, in which the operator may go back or close the guide.
    Trial->Start();
    return works && isVisible();
}

void PlacePage::Note(ServerFault result) {
    works = result == ServerFault::None;
    tried = result != ServerFault::Cancelled;
    emit completeChanged();
    if (!isVisible()) return;
    Access->Mark(result);
    if (tried && !works) lblNote->setText(Text("GoOnAnyway"));
}

void PlacePage::hideEvent(QHideEvent* event) {
    GuidePage::hideEvent(event);
    if (!event->spontaneous()) Trial->Cancel();
}
