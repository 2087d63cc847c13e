#include "ui/settings/ftp/frm_ftp.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/program_folder.h"
#include "core/settings/load_settings.h"
#include "core/settings/quality_choice.h"
#include "picture/picture_state.h"
#include "platform/autostart_entry.h"
#include "platform/platform.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/settings/ftp/offline_group.h"
#include "ui/settings/ftp/trial_panel.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/languages.h"

#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

const QString title = "Stillpost";

}  // namespace

frmFTP::frmFTP(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent)
    : SettingsWindow(surroundings, "frmFTP", parent),
      Trial(new TrialPanel(Core().Wait, Core().Display, Words(), [this] { return WantedTrial(); })),
      Access(new FtpAccessGroup(Controls, Words(), Trial)),
      Offline(nullptr),
      languages(ownLanguages) {
    Trial->Bind(Controls);
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
    rows->Add(chkHistory, {.Key = "lastpictures", .Text = "HistoryOption", .Enabled = server});
    rows->Add(txtHistory, {.Key = "lastpictureanz", .Text = "HistoryCount", .Enabled = history});
    rows->AddSpace();
    rows->AddNote({.Text = "DeleteFirst"});
    rows->Add(chkDelete, {.Key = "Delete", .Text = "DeleteOption"});
    rows->Add<QLineEdit>("FileMode");
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
    return frame;
}

void frmFTP::Connect() {
    connect(Access, &FtpAccessGroup::Edited, Trial, &TrialPanel::Clear);
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
    connect(this, &SettingsWindow::Saved, this, &frmFTP::ApplyAutostart);
}

void frmFTP::ShowSettings() {
    SettingsWindow::ShowSettings();
    Access->AdoptWritten();
    Trial->Clear();
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

QString frmFTP::FullFolder() const {
    const QString folder = Access->Folder();
    return folder.isEmpty() ? folder
                            : QDir(Core().PictureValues.ProgramFolder).absoluteFilePath(folder);
}

bool frmFTP::Check() {
    Access->AdoptTyped();
    return (Access->Local() ? CheckFolder() : CheckServer()) && CheckOffline();
}

bool frmFTP::CheckFolder() {
    if (!Access->Folder().isEmpty() && QDir(FullFolder()).exists()) return true;
    const QString message = ComposeMessages(Words(), {Access->Folder(), {}}).MsgOfflinePathMissing;
    Refuse(*Access->txtVerzeichnis, Text("LocalFolderNote"));
    Boxes().Show(title, message);
    return false;
}

bool frmFTP::CheckServer() {
    const QString fault = Access->AddressFault();
    if (fault.isEmpty() && !Access->ServerIsExample()) return true;
    Refuse(*Access->txtServer,
           Text(fault.isEmpty() ? QString("ExampleServer") : fault).arg(Access->Server()));
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

std::optional<TrialAccess> frmFTP::WantedTrial() {
    Access->AdoptTyped();
    const bool local = Access->Local();
    if (!local && Access->Server().isEmpty()) {
        Refuse(*Access->txtServer, Text("NoServer"));
        return std::nullopt;
    }
    if (!local && !CheckServer()) return std::nullopt;
    Access->txtPort->interpretText();
    return TrialAccess{Access->Server(),
                       Access->txtPort->value(),
                       Access->txtUser->text(),
                       Access->txtPW->text(),
                       local ? FullFolder() : Access->Folder(),
                       chkDelete->isChecked(),
                       local,
                       Core().State.Values.DataFromAnywhere};
}

QString frmFTP::OfflinePath() const {
    return Paths::WithSeparator(QDir(Core().PictureValues.ProgramFolder).filePath("Offline"));
}

void frmFTP::ApplyAutostart() {
    AutostartEntry& entry = *Core().System().Autostart;
    const QStringList arguments = ProgramFolder::AutostartArguments(
        Core().PictureValues.ProgramFolder, ProgramFolder::Places::OfThisProcess({}));
    const bool done = chkAutostart->isChecked()
                          ? entry.Write(QCoreApplication::applicationFilePath(), arguments)
                          : entry.Remove();
    if (!done)
        Boxes().Show(title, Text("AutostartFails").arg(entry.Place()),
                     MessageBoxes::Icon::Critical);
}

void frmFTP::hideEvent(QHideEvent* event) {
    Trial->Cancel();
    SettingsWindow::hideEvent(event);
}
