#include "ui/settings/ftp/frm_ftp.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "core/settings/quality_choice.h"
#include "picture/picture_state.h"
#include "platform/platform.h"
#include "ui/settings/autostart.h"
#include "ui/settings/ftp/frm_page.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/settings/ftp/offline_group.h"
#include "ui/settings/ftp/trial_panel.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/languages.h"

#include <QDir>
#include <QVBoxLayout>

namespace {

const QString title = "Stillpost";

}  // namespace

frmFTP::frmFTP(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent)
    : SettingsWindow(surroundings, "frmFTP", parent),
      Trial(new TrialPanel(Core().Wait, Core().Display, Words(), [this] { return WantedTrial(); })),
      Access(new FtpAccessGroup(Controls, Words(), Trial)),
      languages(ownLanguages) {
    Trial->Bind(Controls);
    Page = new frmPage(surroundings,
                       {[this] { return WantedTrial(); }, [this] { return Entries(); }}, this);
    Offline = new OfflineGroup(
        Controls, Words(), [this] { return Core().PictureValues.ReadingFolders(); },
        [this] { return QSize(Core().ezVidCap1.Width(), Core().ezVidCap1.Height()); });
    LayOut();
    Connect();
    Finish();
}

void frmFTP::LayOut() {
    auto* left = new QVBoxLayout;
    left->addWidget(Access);
    left->addWidget(Offline);
    left->addStretch(1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addWidget(ExtendedFrame(), 1);
    Body().addLayout(columns);
}

QGroupBox* frmFTP::ExtendedFrame() {
    // A folder of this computer has neither a history nor a line to dial.
    const auto server = [this] { return !Access->Local(); };
    const auto history = [this, server] { return server() && chkHistory->isChecked(); };
    const auto dials = [this, server] { return server() && !Connection().isEmpty(); };
    // What is on can always be switched off.
    const auto dialOption = [this, dials](const QString& key) {
        return [this, dials, key] { return dials() || Flag(key); };
    };
    constexpr int shownCharacters = 14;  // of a connection's name; longer ones are cut there
    cbConnection->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbConnection->setMinimumContentsLength(shownCharacters);
    cbConnection->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    QGroupBox* frame = Controls.Frame("FrameExtended");
    auto* rows = new SettingsRows(Controls, frame);
    extended = rows;
    rows->Add(chkHistory, {.Key = "lastpictures", .Text = "HistoryOption", .Enabled = server});
    rows->Add(txtHistory, {.Key = "lastpictureanz", .Text = "HistoryCount", .Enabled = history});
    rows->AddSpace();
    rows->AddNote({.Text = "DeleteFirst"});
    rows->Add(chkDelete, {.Key = "Delete", .Text = "DeleteOption"});
    rows->Add(txtFileMode, "FileMode");
    rows->AddSpace();
    cbQuality->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cbQuality->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    rows->Add(cbQuality,
              {.Key = "Quali",
               .Text = "Quality",
               .Items = QualityChoices.size(),
               .Show = [this](const QString&) { ShowQuality(); },
               .Value = [this] { return QString::number(NearestQualityChoice(Quality())); }});
    rows->AddSpace();
    rows->AddNote({.Text = "DialUp", .Enabled = dials});
    rows->AddBelow(cbConnection, {.Key = "AWName",
                                  .Text = "Connection",
                                  .Enabled = dials,
                                  .Show = [this](const QString& name) { ShowConnections(name); },
                                  .Value = [this] { return Connection(); }});
    rows->Add(chkAnwahl, {.Key = "Anwahl", .Text = "AutoDial", .Enabled = dialOption("Anwahl")});
    rows->Add(chkAbwahl, {.Key = "Abwahl", .Text = "HangUp", .Enabled = dialOption("Abwahl")});
    rows->AddSpace();
    rows->Add(chkAutostart, "Autostart");
    rows->Add(chkNotify, "Notify");
    rows->Add<QCheckBox>("LogFile");
    rows->Add<QLineEdit>(Binding{.Key = "Name", .Text = "CameraName"});
    auto* page = new QHBoxLayout;
    page->addWidget(btnPage);
    page->addStretch(1);
    rows->AddWhole(page);
    Controls.Add(btnPage, {.Text = "WebPage", .Caption = [this] {
                               return Text(Access->Local() ? QString("WebPageLocal") : "WebPage");
                           }});
    return frame;
}

void frmFTP::Connect() {
    connect(Access, &FtpAccessGroup::Edited, Trial, &TrialPanel::Clear);
    connect(Access, &FtpAccessGroup::RowsChanged, this, &frmFTP::ShowRows);
    connect(Trial, &TrialPanel::Done, Access, &FtpAccessGroup::Mark);
    connect(Trial, &TrialPanel::OfferTaken, Access, &FtpAccessGroup::Take);
    connect(btnPage, &QPushButton::clicked, Page, &frmPage::Open);
    connect(Access->optLocal, &QRadioButton::toggled, this, &frmFTP::ShowTexts);
    connect(Offline, &OfflineGroup::FoundTooSmall, this,
            [this] { Boxes().Show(title, languages.Messages().MsgOfflineSize); });
    connect(cbQuality, &QComboBox::activated, this, [this] { qualityChosen = true; });
    // Only when the operator switches it on, not when it is shown as it was saved.
    connect(chkAutostart, &QCheckBox::clicked, this, [this](bool on) {
        if (on) Boxes().Show(title, languages.Messages().MsgAutostartWarning);
    });
    connect(&Controls, &Bindings::TextsShown, this, [this] {
        if (Connection().isEmpty()) cbConnection->setItemText(0, Text("NoConnection"));
    });
    connect(this, &SettingsWindow::Saved, this,
            [this] { ApplyAutostart(Around(), chkAutostart->isChecked()); });
}

void frmFTP::ShowSettings() {
    SettingsWindow::ShowSettings();
    Access->AdoptWritten();
    Trial->Clear();
    ShowRows();
}

// Web servers and object storage know no rights of files.
void frmFTP::ShowRows() {
    const Protocol way = Access->Way->Way();
    extended->ShowRow(txtFileMode,
                      SpeaksFtp(way) || way == Protocol::Sftp || way == Protocol::Unknown);
    ShowTexts();
}

// What the slider of the status window has set stands as a line of its own.
void frmFTP::ShowQuality() {
    constexpr int own = QualityChoices.size();
    cbQuality->removeItem(own);
    qualityChosen = false;
    const int now = Quality();
    const int nearest = NearestQualityChoice(now);
    const bool exact = QualityChoices.at(static_cast<std::size_t>(nearest)) == now;
    if (!exact) cbQuality->addItem(QStringLiteral("%1 %").arg(now));
    cbQuality->setCurrentIndex(exact ? nearest : own);
}

// Per cent: as chosen here, else as it is set.
int frmFTP::Quality() const {
    const auto index = static_cast<std::size_t>(cbQuality->currentIndex());
    if (qualityChosen && index < QualityChoices.size()) return QualityChoices.at(index);
    return LoadSettings(SettingsFile()).JPGQuality;
}

void frmFTP::ShowConnections(const QString& name) {
    const QStringList entries = Core().System().Dial->Entries();
    cbConnection->clear();
    for (const QString& entry : entries) cbConnection->addItem(entry, entry);
    if (!name.isEmpty() && !entries.contains(name)) cbConnection->addItem(name, name);
    const int named = name.isEmpty() ? ValLong(Setting("AWCon")) : cbConnection->findData(name);
    cbConnection->setCurrentIndex(named >= 0 && named < cbConnection->count() ? named : 0);
    if (cbConnection->count() == 0) cbConnection->addItem(Text("NoConnection"), QString());
}

QString frmFTP::Connection() const {
    return cbConnection->currentData().toString();
}

QList<ProfileEntry> frmFTP::Entries() const {
    QList<ProfileEntry> entries = SettingsWindow::Entries();
    entries << Entry("AWCon", qMax(0, cbConnection->currentIndex()))
            << Entry("Offlinefilter", Offline->Index());
    // The choice is a short cut to the slider of the status window.
    if (qualityChosen) entries << Entry("JPGQuality", Quality());
    return entries;
}

bool frmFTP::Check() {
    Access->AdoptTyped();
    const auto fault = Access->FindFault(Core().PictureValues.ProgramFolder);
    if (!fault) return CheckOffline();
    Refuse(*fault->Field, fault->Note);
    if (fault->FolderMissing)
        Boxes().Show(title, ComposeMessages(Words(), {Access->Folder(), {}}).MsgOfflinePathMissing);
    return false;
}

bool frmFTP::CheckOffline() {
    if (Offline->chkOfflinePic->isChecked() && !Offline->Usable()) {
        Refuse(*Offline->cbOffline, Text("OfflineNote"));
        if (!Offline->FolderExists())
            Boxes().Show(title, languages.Messages().MsgOfflinePathMissing);
        return false;
    }
    if (Offline->CopyAdded()) return true;
    Refuse(*Offline->cbOffline, Text("OfflineNotCopied").arg(OfflinePath()));
    return false;
}

std::optional<ServerAccess> frmFTP::WantedTrial() {
    Access->AdoptTyped();
    const QString& folder = Core().PictureValues.ProgramFolder;
    if (const auto fault = Access->FindTrialFault(folder)) {
        Refuse(*fault->Field, fault->Note);
        return std::nullopt;
    }
    ServerAccess access = Access->Wanted(folder);
    access.DeleteFirst = chkDelete->isChecked();
    access.DataFromAnywhere = Core().State.Values.DataFromAnywhere;
    return access;
}

QString frmFTP::OfflinePath() const {
    return Paths::WithSeparator(QDir(Core().PictureValues.ProgramFolder).filePath("Offline"));
}

void frmFTP::hideEvent(QHideEvent* event) {
    Trial->Cancel();
    SettingsWindow::hideEvent(event);
}
