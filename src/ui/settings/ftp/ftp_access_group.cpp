#include "ui/settings/ftp/ftp_access_group.h"

#include "base/paths.h"
#include "base/server_address.h"
#include "net/publishing/answer_texts.h"
#include "ui/settings/frm_pfad.h"
#include "ui/settings/settings_rows.h"

#include <QAction>
#include <QDir>
#include <QStyle>

#include <utility>

namespace {

const QString localMode = QStringLiteral("Local");

bool NamesLocalMode(const QString& server) {
    return server == localMode || server == u"local";
}

bool IsExample(const QString& server) {
    using enum Texts::Language;
    for (const auto language : {English, German, French})
        if (server.compare(FtpExamplesOf(language).Server, Qt::CaseInsensitive) == 0) return true;
    return false;
}

}  // namespace

FtpAccessGroup::FtpAccessGroup(Bindings& ownBindings, const Texts& ownWords, QWidget* trial)
    : bindings(ownBindings), words(ownWords), examples(FtpExamplesOf(ownWords.Current())) {
    LayOut(trial);
    optServer->setChecked(true);
    txtPW->setEchoMode(QLineEdit::Password);
    btnShowPW->setCheckable(true);
    btnFolder->hide();
    connect(btnShowPW, &QPushButton::toggled, this, [this](bool shown) {
        txtPW->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
    });
    connect(btnFolder, &QPushButton::clicked, this, &FtpAccessGroup::ChooseFolder);
    connect(optLocal, &QRadioButton::toggled, this, &FtpAccessGroup::SwitchFolder);
    connect(optLocal, &QRadioButton::toggled, this, &FtpAccessGroup::Edited);
    connect(txtServer, &QLineEdit::editingFinished, this, &FtpAccessGroup::AdoptTyped);
    for (const QLineEdit* field : {txtServer, txtVerzeichnis, txtUser, txtPW})
        connect(field, &QLineEdit::textChanged, this, &FtpAccessGroup::Edited);
    connect(txtPort, &QSpinBox::valueChanged, this, &FtpAccessGroup::Edited);
    connect(this, &FtpAccessGroup::Edited, this, &FtpAccessGroup::Unmark);
    connect(&bindings, &Bindings::TextsShown, this, [this] {
        examples = WithExamplesOf(words.Current(), examples);
        ShowMode();
    });
}

void FtpAccessGroup::LayOut(QWidget* trial) {
    const auto server = [this] { return !Local(); };
    auto* rows = new SettingsRows(bindings, this);
    bindings.Add(this, {.Text = "FrameAccess"});
    rows->Add(optServer, {.Text = "ModeServer"});
    rows->Add(optLocal, {.Text = "ModeLocal"});
    Way = new WayFields(bindings, *rows, [this] { return Local(); });
    Way->AddChoice();
    rows->Add(txtServer, {.Key = "Server",
                          .Enabled = server,
                          .Show = [this](const QString& written) { ShowServer(written); },
                          .Value = [this] { return Server(); }});
    rows->Add(txtVerzeichnis,
              {.Key = "Verzeichnis",
               .Text = "Path",
               .Caption = [this] { return WayText("Path"); },
               .Value = [this] { return Folder(); }},
              btnFolder);
    bindings.Add(btnFolder, {.Text = "ChooseFolder"});
    rows->Add(txtUser,
              {.Key = "User", .Caption = [this] { return WayText("User"); }, .Enabled = server});
    rows->Add(txtPW,
              {.Key = "PW",
               .Text = "Password",
               .Caption = [this] { return WayText("Password"); },
               .Enabled = server},
              btnShowPW);
    bindings.Add(btnShowPW, {.Text = "ShowPassword", .Enabled = server});
    rows->Add(txtPort, {.Key = "Port", .Enabled = server});
    Way->AddFields();
    connect(Way, &WayFields::Edited, this, &FtpAccessGroup::Edited);
    // What was accepted of one server says nothing about another.
    connect(txtServer, &QLineEdit::textEdited, Way->txtTrusted, &QLineEdit::clear);
    connect(Way->cbProtocol, &QComboBox::activated, Way->txtTrusted, &QLineEdit::clear);
    connect(Way, &WayFields::WayChanged, this, &FtpAccessGroup::FollowWay);
    if (trial) rows->AddWhole(trial);
    for (QLineEdit* field : {txtServer, txtVerzeichnis, txtUser, txtPW})
        field->setMinimumWidth(field->sizeHint().width());
}

void FtpAccessGroup::ShowServer(const QString& server) {
    const bool local = NamesLocalMode(server);
    (local ? optLocal : optServer)->setChecked(true);
    otherFolder.clear();
    // An example that got into the file is no server.
    txtServer->setText(local || IsExample(server) ? QString() : server);
    btnShowPW->setChecked(false);
    examples = FtpExamplesOf(words.Current());
    ShowMode();
}

void FtpAccessGroup::SwitchFolder() {
    const QString coming = std::exchange(otherFolder, txtVerzeichnis->text());
    txtVerzeichnis->setText(coming);
    ShowMode();
}

void FtpAccessGroup::AdoptAddress(bool overwrite) {
    const ServerAddress address = ServerAddress::Of(txtServer->text());
    if (Local() || address.Is != ServerAddress::Fault::None) return;
    const QString written = address.Protocol;
    if (!address.Fits(Way->Setting())) {
        if (!overwrite) return;
        Way->Choose(written);
    }
    const QString server = address.ServerFor(Way->Setting());
    if (txtServer->text() != server) txtServer->setText(server);
    if (address.Port != 0) txtPort->setValue(address.Port);
    const auto adopt = [overwrite](QLineEdit* field, const QString& part) {
        if (!part.isEmpty() && (overwrite || field->text().isEmpty())) field->setText(part);
    };
    adopt(txtUser, address.User);
    adopt(txtPW, address.Password);
    adopt(txtVerzeichnis, address.Path);
}

void FtpAccessGroup::AdoptWritten() {
    // As it is taken for every other way, too.
    if (txtPort->value() == UsualPort(Protocol::Ftp) && Way->Way() != Protocol::Unknown)
        txtPort->setValue(UsualPort(Way->Way()));
    AdoptAddress(false);
}

QString FtpAccessGroup::AddressFault() const {
    static const QStringList keys{{}, "BadServer", "BadPort", "BadProtocol"};
    if (Local()) return {};
    if (Way->Way() == Protocol::Unknown) return "NoWay";
    if (Server().isEmpty()) return {};
    const ServerAddress address = ServerAddress::Of(Server());
    const bool fits = address.Is != ServerAddress::Fault::None || address.Fits(Way->Setting());
    return fits ? keys.value(static_cast<int>(address.Is)) : QString("BadFit");
}

// A port that is usual for one way is none for another.
void FtpAccessGroup::FollowWay(Protocol former) {
    const Protocol now = Way->Way();
    if (former != Protocol::Unknown && now != Protocol::Unknown &&
        txtPort->value() == UsualPort(former))
        txtPort->setValue(UsualPort(now));
    emit RowsChanged();
}

// What some ways have another word for.
QString FtpAccessGroup::WayText(const QString& key) const {
    return Text(Way && Way->Way() == Protocol::S3 ? key + "S3" : key);
}

QLineEdit* FtpAccessGroup::FieldOf(ServerFault fault) const {
    switch (fault) {
        case ServerFault::HostNotFound:
        case ServerFault::Refused:
        case ServerFault::Unreachable:
        case ServerFault::NoAnswer:
        case ServerFault::NotThisWay:
        case ServerFault::PutNotAllowed:
        case ServerFault::RedirectedAway:
        case ServerFault::CertificateWrongName:
            return txtServer;
        case ServerFault::LoginRefused:
            return txtUser;
        case ServerFault::SignatureRefused:
        case ServerFault::KeyNeedsPassphrase:
            return txtPW;
        case ServerFault::FolderMissing:
        case ServerFault::MayNotStore:
        case ServerFault::Forbidden:
        case ServerFault::LocalFolderMissing:
        case ServerFault::LocalNotWritable:
            return txtVerzeichnis;
        default:
            return Way->FieldOf(fault);
    }
}

void FtpAccessGroup::Take(const TrialOutcome& outcome) {
    switch (outcome.Offer) {
        case TrialOffer::None:
            break;
        case TrialOffer::Accept:
            Way->txtTrusted->setText(outcome.Answer.Reply);
            break;
        case TrialOffer::SwitchPassive:
            Way->chkPassive->toggle();
            break;
        case TrialOffer::Encrypt:
            Way->Choose(SettingOf(Protocol::Ftps));
            break;
    }
}

void FtpAccessGroup::AdoptTyped() {
    if (!NamesLocalMode(txtServer->text().trimmed())) return AdoptAddress(true);
    // What was typed for a server is the folder then.
    otherFolder = txtVerzeichnis->text();
    txtServer->clear();
    optLocal->setChecked(true);
}

bool FtpAccessGroup::Local() const {
    return optLocal->isChecked();
}

QString FtpAccessGroup::Server() const {
    return Local() ? localMode : txtServer->text().trimmed();
}

QString FtpAccessGroup::Folder() const {
    const QString typed = txtVerzeichnis->text().trimmed();
    return Local() ? Paths::WithSeparator(typed) : typed;
}

bool FtpAccessGroup::ServerIsExample() const {
    return !Local() && IsExample(Server());
}

QString FtpAccessGroup::FullFolder(const QString& programFolder) const {
    const QString folder = Folder();
    return folder.isEmpty() ? folder : QDir(programFolder).absoluteFilePath(folder);
}

std::optional<FtpAccessGroup::Fault> FtpAccessGroup::FindFault(const QString& programFolder) const {
    if (Local()) {
        const QString folder = FullFolder(programFolder);
        if (!folder.isEmpty() && QDir(folder).exists()) return std::nullopt;
        return Fault{txtVerzeichnis, Text("LocalFolderNote"), true};
    }
    const QString fault = ServerIsExample() ? QString("ExampleServer") : AddressFault();
    if (fault.isEmpty()) return std::nullopt;
    return Fault{txtServer, Text(fault).arg(Server())};
}

std::optional<FtpAccessGroup::Fault> FtpAccessGroup::FindTrialFault(
    const QString& programFolder) const {
    if (Local()) return std::nullopt;  // the trial tells more of a folder
    if (Server().isEmpty()) return Fault{txtServer, Text("NoServer")};
    return FindFault(programFolder);
}

ServerAccess FtpAccessGroup::Wanted(const QString& programFolder) const {
    txtPort->interpretText();
    ServerAccess access{.Server = Server(),
                        .Port = txtPort->value(),
                        .User = txtUser->text(),
                        .Password = txtPW->text(),
                        .Folder = Local() ? FullFolder(programFolder) : Folder(),
                        .Local = Local(),
                        .ProgramFolder = programFolder};
    Way->Fill(access);
    return access;
}

void FtpAccessGroup::Mark(ServerFault result) {
    Unmark();
    QLineEdit* const field = FieldOf(result);
    if (!field) return;
    marked = field;
    mark = marked->addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                             QLineEdit::TrailingPosition);
    marked->setFocus();
    marked->selectAll();
}

void FtpAccessGroup::Unmark() {
    delete std::exchange(mark, nullptr);
}

void FtpAccessGroup::ChooseFolder() {
    auto* chooser = new frmPfad(words, this);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setWindowModality(Qt::WindowModal);
    connect(chooser, &frmPfad::Chosen, this, [this](const QString& folder) {
        if (Local()) txtVerzeichnis->setText(Paths::WithSeparator(folder));
    });
    chooser->Open(txtVerzeichnis->text(), frmPfad::Purpose::Publishing);
}

void FtpAccessGroup::ShowMode() {
    const bool local = Local();
    btnFolder->setVisible(local);
    Way->ShowFields();
    txtServer->setPlaceholderText(local ? QString() : examples.Server);
    txtUser->setPlaceholderText(local ? QString() : examples.User);
    txtVerzeichnis->setPlaceholderText(local ? QString() : examples.Path);
    txtVerzeichnis->setToolTip(Text(local ? QString("LocalFolderHelp") : "PathHelp"));
}
