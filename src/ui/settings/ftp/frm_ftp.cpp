#include "ui/settings/ftp/frm_ftp.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "core/program.h"
#include "core/program_folder.h"
#include "core/settings/load_settings.h"
#include "core/settings/setting_table.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/settings/ftp/ftp_extended_group.h"
#include "ui/settings/ftp/offline_group.h"
#include "ui/settings/ftp/trial_panel.h"
#include "ui/texts/languages.h"
#include "ui/widgets/number_field.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

const QString title = "Stillpost";

int DefaultOf(QStringView key) {
    return SettingRowOf(u"Einstellungen", key).Default.toInt();
}

}  // namespace

frmFTP::frmFTP(const Surroundings& surroundings, const Languages& ownLanguages, QWidget* parent)
    : SettingsWindow(surroundings, "frmFTP", parent),
      Access(new FtpAccessGroup(Words())),
      Extended(new FtpExtendedGroup(Words())),
      Offline(new OfflineGroup(
          Words(), [this] { return Core().PictureValues.ReadingFolders(); },
          [this] { return QSize(Core().ezVidCap1.Width(), Core().ezVidCap1.Height()); })),
      Trial(new TrialPanel(Core().Wait, Core().Display, Words(), [this] { return WantedTrial(); })),
      languages(ownLanguages) {
    LayOut();
    SetTabOrder();
    Connect();
    Finish();
}

void frmFTP::LayOut() {
    Access->AddBelow(Trial);
    auto* columns = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(Access);
    left->addWidget(Offline);
    left->addStretch(1);
    columns->addLayout(left, 1);
    columns->addWidget(Extended, 1);
    Body().addLayout(columns);
}

void frmFTP::SetTabOrder() {
    const QList<QWidget*> order{Access->optServer,
                                Access->optLocal,
                                Access->txtServer,
                                Access->txtVerzeichnis,
                                Access->btnFolder,
                                Access->txtUser,
                                Access->txtPW,
                                Access->btnShowPW,
                                Access->txtPort,
                                Trial->btnTrial,
                                Trial->btnStopTrial,
                                Offline->chkOfflinePic,
                                Offline->chkFilter,
                                Offline->cbOffline,
                                Offline->btnAddOffline,
                                Offline->txtOfflinePath,
                                Extended->chkHistory,
                                Extended->txtHistory,
                                Extended->chkDelete,
                                Extended->cbQuality,
                                Extended->cbConnection,
                                Extended->chkAnwahl,
                                Extended->chkAbwahl,
                                Extended->chkAutostart,
                                btnSave};
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmFTP::Connect() {
    connect(Access, &FtpAccessGroup::ModeChanged, this,
            [this] { Extended->SetLocal(Access->Local()); });
    connect(Access, &FtpAccessGroup::Edited, Trial, &TrialPanel::Clear);
    connect(Access, &FtpAccessGroup::ModeChanged, Trial, &TrialPanel::Clear);
    connect(Offline, &OfflineGroup::FoundTooSmall, this,
            [this] { Boxes().Show(title, languages.Messages().MsgOfflineSize); });
    // Only when the operator switches it on, not when it is shown as it was saved.
    connect(Extended->chkAutostart, &QCheckBox::clicked, this, [this](bool on) {
        if (on) Boxes().Show(title, languages.Messages().MsgAutostartWarning);
    });
    connect(this, &SettingsWindow::Saved, this, &frmFTP::ApplyAutostart);
}

void frmFTP::ShowSettings() {
    const Settings values = LoadSettings(Core().SettingsFile());
    Access->ShowSettings(values, Setting("Server"), Setting("Verzeichnis"));
    Extended->ShowSettings(values, Flag("Abwahl"), Flag("Autostart"));
    Extended->ShowConnections(Core().System().Dial->Entries(), values.AWName,
                              ValLong(Setting("AWCon")));
    Offline->ShowSettings(Flag("OfflinePic"), Flag("UseOfflineFilter"), values.Offlinefile);
    Trial->Clear();
}

QList<ProfileEntry> frmFTP::Entries() const {
    QList<ProfileEntry> entries{
        Entry("Server", Access->Server()),
        Entry("Verzeichnis", Access->Folder()),
        Entry("User", Access->txtUser->text()),
        Entry("PW", Access->txtPW->text()),
        Entry("Port", Access->txtPort->Value().value_or(DefaultOf(u"Port"))),
        Entry("Delete", Extended->chkDelete->isChecked()),
        Entry("Anwahl", Extended->chkAnwahl->isChecked()),
        Entry("Abwahl", Extended->chkAbwahl->isChecked()),
        Entry("AWName", Extended->Connection()),
        Entry("AWCon", Extended->ConnectionPlace()),
        Entry("Autostart", Extended->chkAutostart->isChecked()),
        Entry("lastpictures", Extended->chkHistory->isChecked()),
        Entry("lastpictureanz",
              Extended->txtHistory->Value().value_or(DefaultOf(u"lastpictureanz"))),
        Entry("OfflinePic", Offline->chkOfflinePic->isChecked()),
        Entry("UseOfflineFilter", Offline->chkFilter->isChecked()),
        Entry("Offlinefilter", Offline->Index()),
        Entry("Offlinefile", Offline->File()),
        Entry("Quali", Extended->cbQuality->currentIndex())};
    // The choice is a short cut to the slider of the status window.
    if (const auto quality = Extended->ChosenQuality()) entries << Entry("JPGQuality", *quality);
    return entries;
}

QString frmFTP::FullFolder() const {
    const QString folder = Access->Folder();
    return folder.isEmpty() ? folder
                            : QDir(Core().PictureValues.ProgramFolder).absoluteFilePath(folder);
}

bool frmFTP::Check() {
    Access->AdoptTypedMode();
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
    if (!Access->ServerIsExample()) return true;
    Refuse(*Access->txtServer, Text("ExampleServer").arg(Access->Server()));
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
    Access->AdoptTypedMode();
    const bool local = Access->Local();
    if (!local && Access->Server().isEmpty()) {
        Refuse(*Access->txtServer, Text("NoServer"));
        return std::nullopt;
    }
    if (!local && !CheckServer()) return std::nullopt;
    const std::optional<int> port = Access->txtPort->Value();
    if (!local && !port) {
        Access->txtPort->setFocus();  // the note says already what is wrong
        return std::nullopt;
    }
    return TrialAccess{Access->Server(),
                       port.value_or(DefaultOf(u"Port")),
                       Access->txtUser->text(),
                       Access->txtPW->text(),
                       local ? FullFolder() : Access->Folder(),
                       Extended->chkDelete->isChecked(),
                       local};
}

QString frmFTP::OfflinePath() const {
    return Paths::WithSeparator(QDir(Core().PictureValues.ProgramFolder).filePath("Offline"));
}

void frmFTP::ApplyAutostart() {
    AutostartEntry& entry = *Core().System().Autostart;
    const QStringList arguments = ProgramFolder::AutostartArguments(
        Core().PictureValues.ProgramFolder, ProgramFolder::Places::OfThisProcess({}));
    const bool done = Extended->chkAutostart->isChecked()
                          ? entry.Write(QCoreApplication::applicationFilePath(), arguments)
                          : entry.Remove();
    if (!done)
        Boxes().Show(title, Text("AutostartFails").arg(entry.Place()),
                     MessageBoxes::Icon::Critical);
}

void frmFTP::ShowTexts() {
    Access->ShowTexts();
    Extended->ShowTexts();
    Offline->ShowTexts();
    Trial->ShowTexts();
    SettingsWindow::ShowTexts();
}

void frmFTP::hideEvent(QHideEvent* event) {
    Trial->Cancel();
    SettingsWindow::hideEvent(event);
}
