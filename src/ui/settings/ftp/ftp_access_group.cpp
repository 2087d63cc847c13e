#include "ui/settings/ftp/ftp_access_group.h"

#include "base/paths.h"
#include "core/settings/setting_table.h"
#include "ui/widgets/number_field.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <initializer_list>
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

NumberField* MakePort() {
    const SettingRow& row = SettingRowOf(u"Einstellungen", u"Port");
    auto* field = new NumberField(row.Least, row.Most);
    field->SetWhenEmpty(row.Default.toInt());
    field->setPlaceholderText(row.Default.toString());
    return field;
}

}  // namespace

FtpAccessGroup::FtpAccessGroup(const Texts& ownWords)
    : optServer(new QRadioButton),
      optLocal(new QRadioButton),
      txtServer(new QLineEdit),
      txtVerzeichnis(new QLineEdit),
      btnFolder(new QPushButton),
      txtUser(new QLineEdit),
      txtPW(new QLineEdit),
      btnShowPW(new QPushButton),
      txtPort(MakePort()),
      words(ownWords),
      all(new QVBoxLayout(this)),
      lblServer(new QLabel),
      lblPath(new QLabel),
      lblUser(new QLabel),
      lblPassword(new QLabel),
      lblPort(new QLabel),
      examples(FtpExamplesOf(ownWords.Current())) {
    LayOut();
    optServer->setChecked(true);
    txtPW->setEchoMode(QLineEdit::Password);
    btnShowPW->setCheckable(true);
    connect(btnShowPW, &QPushButton::toggled, this, [this](bool shown) {
        txtPW->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
    });
    connect(btnFolder, &QPushButton::clicked, this, &FtpAccessGroup::ChooseFolder);
    connect(optLocal, &QRadioButton::toggled, this, [this] {
        const QString coming = std::exchange(otherFolder, txtVerzeichnis->text());
        txtVerzeichnis->setText(coming);
        ApplyMode();
    });
    connect(txtServer, &QLineEdit::editingFinished, this, &FtpAccessGroup::AdoptTypedMode);
    for (const QLineEdit* field : {txtServer, txtVerzeichnis, txtUser, txtPW})
        connect(field, &QLineEdit::textChanged, this, &FtpAccessGroup::Edited);
    connect(txtPort, &QLineEdit::textChanged, this, &FtpAccessGroup::Edited);
}

void FtpAccessGroup::LayOut() {
    all->addWidget(optServer);
    all->addWidget(optLocal);
    auto* grid = new QGridLayout;
    all->addLayout(grid);
    int row = 0;
    const auto add = [&](QLabel* caption, QWidget* field, QWidget* behind) {
        caption->setBuddy(field);
        grid->addWidget(caption, row, 0);
        auto* line = new QHBoxLayout;
        line->addWidget(field, 1);
        if (behind) line->addWidget(behind);
        grid->addLayout(line, row++, 1);
    };
    add(lblServer, txtServer, nullptr);
    add(lblPath, txtVerzeichnis, btnFolder);
    add(lblUser, txtUser, nullptr);
    add(lblPassword, txtPW, btnShowPW);
    lblPort->setBuddy(txtPort);
    grid->addWidget(lblPort, row, 0);
    grid->addWidget(txtPort, row, 1);
    grid->setColumnStretch(1, 1);
    for (QLineEdit* field : {txtServer, txtVerzeichnis, txtUser, txtPW})
        field->setMinimumWidth(field->sizeHint().width());
}

void FtpAccessGroup::ShowSettings(const Settings& values, const QString& server,
                                  const QString& folder) {
    const bool local = NamesLocalMode(server);
    optLocal->setChecked(local);
    optServer->setChecked(!local);
    otherFolder.clear();
    txtVerzeichnis->setText(folder);
    // An example that got into the file is no server.
    txtServer->setText(local || IsExample(server) ? QString() : server);
    txtUser->setText(values.User);
    txtPW->setText(values.PW);
    btnShowPW->setChecked(false);
    txtPort->SetValue(values.Port);
    examples = FtpExamplesOf(words.Current());
    ApplyMode();
}

void FtpAccessGroup::ApplyMode() {
    const bool local = optLocal->isChecked();
    for (QWidget* each :
         std::initializer_list<QWidget*>{lblServer, txtServer, lblUser, txtUser, lblPassword, txtPW,
                                         btnShowPW, lblPort, txtPort})
        each->setEnabled(!local);
    btnFolder->setVisible(local);
    ShowExamples();
    emit ModeChanged();
}

void FtpAccessGroup::AdoptTypedMode() {
    if (!NamesLocalMode(txtServer->text().trimmed())) return;
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

void FtpAccessGroup::AddBelow(QWidget* widget) {
    all->addWidget(widget);
}

void FtpAccessGroup::ChooseFolder() {
    auto* chooser = new QFileDialog(this, Text("ChooseFolder"), txtVerzeichnis->text());
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setFileMode(QFileDialog::Directory);
    chooser->setOption(QFileDialog::ShowDirsOnly);
    connect(chooser, &QFileDialog::fileSelected, this, [this](const QString& folder) {
        if (Local()) txtVerzeichnis->setText(Paths::WithSeparator(folder));
    });
    chooser->open();
}

void FtpAccessGroup::Describe(QWidget* control, const QString& key, const QString& name) {
    control->setToolTip(Text(key + "Help"));
    control->setAccessibleName(name);
}

void FtpAccessGroup::ShowTexts() {
    setTitle(Text("FrameAccess"));
    optServer->setText(Text("ModeServer"));
    optLocal->setText(Text("ModeLocal"));
    lblServer->setText(Text("Server"));
    lblPath->setText(Text("Path"));
    lblUser->setText(Text("User"));
    lblPassword->setText(Text("Password"));
    lblPort->setText(Text("Port"));
    btnFolder->setText(Text("ChooseFolder"));
    btnShowPW->setText(Text("ShowPassword"));
    Describe(optServer, "ModeServer", Text("ModeServer"));
    Describe(optLocal, "ModeLocal", Text("ModeLocal"));
    Describe(txtServer, "Server", Text("Server"));
    Describe(txtUser, "User", Text("User"));
    Describe(txtPW, "Password", Text("Password"));
    Describe(txtPort, "Port", Text("Port"));
    Describe(btnFolder, "ChooseFolder", Text("ChooseFolder"));
    Describe(btnShowPW, "ShowPassword", Text("ShowPassword"));
    examples = WithExamplesOf(words.Current(), examples);
    ShowExamples();
}

void FtpAccessGroup::ShowExamples() {
    const bool local = optLocal->isChecked();
    txtServer->setPlaceholderText(local ? QString() : examples.Server);
    txtUser->setPlaceholderText(local ? QString() : examples.User);
    txtVerzeichnis->setPlaceholderText(local ? QString() : examples.Path);
    Describe(txtVerzeichnis, local ? QString("LocalFolder") : QString("Path"), Text("Path"));
}
