#include "ui/settings/ftp/frm_page.h"

#include "base/message_boxes.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "core/page_settings.h"
#include "core/program.h"
#include "core/public_address.h"
#include "core/settings/load_settings.h"
#include "picture/picture_state.h"
#include "ui/settings/settings_rows.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QVBoxLayout>

frmPage::frmPage(const Surroundings& surroundings, Place ownPlace, QWidget* parent)
    : SettingsWindow(surroundings, "frmPage", parent),
      place(std::move(ownPlace)),
      placing(surroundings.Core.Wait, surroundings.Core.Display),
      second(surroundings.Core.Wait.OwnClock(), 1000) {
    // What stands in the other window is not changed meanwhile.
    setWindowModality(Qt::WindowModal);
    LayOut();
    connect(btnPut, &QPushButton::clicked, this, &frmPage::Put);
    connect(btnStop, &QPushButton::clicked, this, [this] { placing.Cancel(); });
    connect(&Controls, &Bindings::TextsShown, this, [this] { Say(said); });
    connect(&placing, &PagePlacing::StepStarted, this, [this](PageStep begun) {
        step = begun;
        Controls.ApplyEnabled();
        btnStop->setFocus();
        Say([this] { return PageStepText(Words(), step, seconds); });
    });
    connect(&second, &Timer::Tick, this, [this] {
        ++seconds;
        Say(said);
    });
    Finish();
}

void frmPage::LayOut() {
    auto* rows = new SettingsRows(Controls);
    Body().addLayout(rows);
    rows->AddNote({.Text = "Explained"});
    rows->AddSpace();
    rows->Add(txtTitle, {.Key = "PageTitle"});
    rows->Add(txtFile, {.Key = "PageFile"});
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnPut);
    buttons->addWidget(btnStop);
    buttons->addStretch(1);
    rows->AddWhole(buttons);
    constexpr int shownCharacters = 45;
    txtTitle->setMinimumWidth(fontMetrics().averageCharWidth() * shownCharacters);
    Controls.Add(btnPut, {.Text = "Put", .Enabled = [this] { return !placing.Running(); }});
    Controls.Add(btnStop, {.Text = "Stop", .Enabled = [this] { return placing.Running(); }});
    rows->AddWhole(lblState);
    lblState->setWordWrap(true);
    lblState->setTextFormat(Qt::PlainText);
    lblState->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Body().addStretch(1);
}

void frmPage::ShowSettings() {
    SettingsWindow::ShowSettings();
    Say({});
}

void frmPage::Say(std::function<QString()> text) {
    said = std::move(text);
    lblState->setText(said ? said() : QString());
}

void frmPage::Put() {
    if (placing.Running()) return;
    const Settings wanted = LoadSettings(SettingsFile(), place.Entries() + Controls.Entries());
    if (wanted.PageFile != txtFile->text()) return Refuse(*txtFile, Text("BadFile"));
    const std::optional<ServerAccess> access = place.Access();
    if (!access) return hide();
    const PagePlacing::Page page = PageOf(wanted, Words(), Core().PictureValues.ReadingFolders());
    if (page.Html.isEmpty()) return Say([this] { return Text("NoPage"); });
    (void)Core().ChangeSettings(Controls.Entries());
    PutThere(*access, page);
}

void frmPage::PutThere(const ServerAccess& access, const PagePlacing::Page& page) {
    seconds = 0;
    second.SetEnabled(true);
    const ServerAnswer answer = placing.Run(access, page, [&](PageThere there) {
        return Boxes().AskYes("Stillpost", PageQuestion(Words(), page.Name, there));
    });
    second.SetEnabled(false);
    const bool here = btnStop->hasFocus();
    Controls.ApplyEnabled();
    if (here) btnPut->setFocus();
    const QString at =
        access.Local || !answer.Fine() ? QString() : PublicAddress(access, page.Name);
    Say([this, access, answer, at] {
        const QString text = PageText(Words(), access, answer);
        return at.isEmpty() ? text : text + u' ' + Text("FineAt").arg(at);
    });
}

void frmPage::hideEvent(QHideEvent* event) {
    placing.Cancel();
    SettingsWindow::hideEvent(event);
}
