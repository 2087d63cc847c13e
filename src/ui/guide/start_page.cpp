#include "ui/guide/start_page.h"

#include "base/paths.h"
#include "core/program.h"
#include "core/public_address.h"
#include "ui/settings/settings_rows.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

namespace {

// Below the program folder.
QString ArchiveFolder() {
    return Paths::WithSeparator(QStringLiteral("archive"));
}

QLocale LocaleOf(Texts::Language language) {
    using enum Texts::Language;
    return language == German   ? QLocale::German
           : language == French ? QLocale::French
                                : QLocale::English;
}

}  // namespace

StartPage::StartPage(const SettingsWindow::Surroundings& surroundings)
    : GuidePage(surroundings, "Start"),
      lblPlan(new QLabel),
      txtPublic(new QLineEdit),
      txtHtml(new QLineEdit),
      btnCopy(new QPushButton),
      chkAutostart(new QCheckBox),
      chkArchive(new QCheckBox),
      lblSpace(new QLabel) {
    for (QLabel* label : {lblPlan, lblSpace}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    txtHtml->setReadOnly(true);
    LayOut();
    connect(txtPublic, &QLineEdit::textChanged, this, &StartPage::ShowHtml);
    connect(btnCopy, &QPushButton::clicked, this, [this] {
        QGuiApplication::clipboard()->setText(txtHtml->text());
        lblNote->setText(Text("Copied"));
    });
}

void StartPage::LayOut() {
    auto* rows = new SettingsRows(Controls());
    Body().addWidget(lblPlan);
    rows->AddSpace();
    rows->AddBelow(txtPublic, {.Text = "Public"});
    rows->AddBelow(txtHtml, {.Text = "Html"}, btnCopy);
    Controls().Add(btnCopy, {.Text = "Copy"});
    rows->AddSpace();
    rows->Add(chkAutostart, {.Key = "Autostart", .Text = "Autostart"});
    rows->Add(chkArchive, {.Key = "Archive", .Text = "Archive"});
    rows->AddWhole(lblSpace);
    Body().addLayout(rows, 1);
}

QWidget* StartPage::First() const {
    return txtPublic;
}

void StartPage::Show(const GuidePlan& newPlan) {
    plan = newPlan;
    const QString now =
        plan.Place.Local ? LocalAddress(plan.Place.Folder) : PublicAddress(plan.Place);
    if (now != guessed) txtPublic->setText(now);
    guessed = now;
    lblNote->clear();
    ShowPlan();
}

void StartPage::ShowPlan() {
    const ServerAccess& place = plan.Place;
    const QString where =
        place.Local ? QDir::toNativeSeparators(place.Folder) : QString(place.Server);
    QString text = Text(place.Local ? QString("PlanLocal") : "PlanServer")
                       .arg(plan.IntervalText, plan.Camera, where);
    text += u' ' + Text(plan.Offline ? QString("PlanOffline") : "PlanNoOffline");
    lblPlan->setText(text);
    lblSpace->setText(SpaceText());
}

QString StartPage::SpaceText() const {
    const QString written = Setting("ArchivePath");
    const QString folder = QDir(Core().ProgramFolder())
                               .absoluteFilePath(written.isEmpty() ? ArchiveFolder() : written);
    const QString where = Text("ArchiveFolder").arg(QDir::toNativeSeparators(folder));
    if (plan.PictureBytes == 0 || plan.Interval == 0) return where;
    constexpr qint64 day = 86'400'000;
    constexpr double least = 1;  // picture
    const double pictures =
        qMax(least, static_cast<double>(day) / static_cast<double>(plan.Interval));
    const auto bytes = static_cast<qint64>(pictures * static_cast<double>(plan.PictureBytes));
    const QString size =
        LocaleOf(Words().Current()).formattedDataSize(bytes, 0, QLocale::DataSizeTraditionalFormat);
    return Text("ArchiveSpace").arg(size) + u' ' + where;
}

void StartPage::ShowHtml() {
    txtHtml->setText(ImageHtml(txtPublic->text().trimmed()));
    txtHtml->setCursorPosition(0);
}

void StartPage::ShowTexts(const QList<QAbstractButton*>& below) {
    GuidePage::ShowTexts(below);
    ShowPlan();
}

QList<ProfileEntry> StartPage::Entries() const {
    QList<ProfileEntry> entries = GuidePage::Entries();
    if (chkArchive->isChecked() && Setting("ArchivePath").isEmpty())
        entries << ProfileEntry{"Einstellungen", "ArchivePath", ArchiveFolder()};
    return entries;
}
