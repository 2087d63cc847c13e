#include "ui/settings/camera/frm_archive.h"

#include "base/paths.h"
#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "picture/archive/archive_folder.h"
#include "picture/archive/archive_names.h"
#include "picture/picture_state.h"
#include "ui/settings/camera/path_field.h"
#include "ui/settings/settings_rows.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>

namespace {

const QString iso = QStringLiteral("iso");

QString SizeText(const QLocale& locale, qint64 bytes) {
    return locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

}  // namespace

frmArchive::frmArchive(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "frmArchive", parent),
      chkArchive(new QCheckBox),
      txtFolder(new PathField),
      lblMissing(new QLabel),
      cbNames(new QComboBox),
      btnOther(new QPushButton),
      lblName(new QLabel),
      lblSpace(new QLabel),
      Chooser(surroundings.Words, parent),
      chkFolders(new QCheckBox) {
    for (QLabel* label : {lblMissing, lblName, lblSpace}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    LayOut();
    connect(&Controls, &Bindings::Edited, this, &frmArchive::ShowNames);
    connect(&Controls, &Bindings::TextsShown, this, &frmArchive::ShowNames);
    connect(&Controls, &Bindings::TextsShown, this, &frmArchive::LookAtFolder);
    connect(btnOther, &QPushButton::clicked, this, [this] { cbNames->setCurrentIndex(1); });
    connect(txtFolder, &QLineEdit::editingFinished, this, &frmArchive::LookAtFolder);
    connect(chkArchive, &QCheckBox::clicked, this, &frmArchive::LookAtFolder);
    connect(txtFolder, &PathField::ChooserWanted, this, [this] {
        const QString folder = Folder();
        Chooser.Open(folder.isEmpty() ? QDir::homePath() : folder, frmPfad::Purpose::Archive);
    });
    connect(&Chooser, &frmPfad::Chosen, this, [this](const QString& folder) {
        txtFolder->setText(folder);
        txtFolder->setFocus();
        LookAtFolder();
    });
    Finish();
    // The separator at the end needs room too.
    txtFolder->setMaxLength(txtFolder->maxLength() - 1);
}

void frmArchive::LayOut() {
    auto* rows = new SettingsRows(Controls);
    rows->Add(chkArchive, "Archive");
    rows->AddBelow(txtFolder, {.Key = "ArchivePath"}, txtFolder->btnBrowse);
    Controls.Add(txtFolder->btnBrowse, {.Text = "Browse"});
    rows->AddWhole(lblMissing);
    rows->Add(cbNames,
              {.Key = "ArchiveNames",
               .Items = 2,
               .Show = [this](const QString& names) { cbNames->setCurrentIndex(names == iso); },
               .Value = [this] { return cbNames->currentIndex() == 1 ? iso : QString(); }},
              btnOther);
    Controls.Add(btnOther, {.Text = "Other"});
    rows->AddWhole(lblName);
    rows->Add(chkFolders, "ArchiveFolders");
    rows->Add<NumberBox>("ArchiveEvery");
    rows->Add<NumberBox>("ArchiveDays");
    rows->Add<NumberBox>("ArchiveMegabytes");
    rows->AddNote({.Text = "OnlyOwn"});
    rows->AddSpace();
    rows->AddWhole(lblSpace);
    Body().addLayout(rows);
    Body().addStretch(1);
}

void frmArchive::ShowSettings() {
    SettingsWindow::ShowSettings();
    ShowNames();
    LookAtFolder();
    chkArchive->setFocus();
}

void frmArchive::hideEvent(QHideEvent* event) {
    SettingsWindow::hideEvent(event);
    if (!event->spontaneous() && Chooser.isVisible()) Chooser.reject();
}

void frmArchive::ShowNames() {
    const QLocale& locale = Core().PictureValues.Locale;
    const QDateTime now = Core().Wait.OwnClock().Now();
    const bool sorted = cbNames->currentIndex() == 1;
    const bool exist = sorted || SystemNamesExist(locale);
    const QString name = sorted ? IsoArchiveName(now) : SystemArchiveName(now, locale);
    const QString above =
        chkFolders->isChecked() ? Paths::WithSeparator(DayFolder(now.date())) : QString();
    lblName->setText(Text(exist ? QString("Example") : "NoName").arg(above + name));
    btnOther->setVisible(!exist);
}

// As the program will have it.
QString frmArchive::Folder() const {
    const QString typed = txtFolder->Folder();
    if (typed.isEmpty() || !QDir::isRelativePath(typed)) return typed;
    return Paths::WithSeparator(QDir(Core().ProgramFolder()).absoluteFilePath(typed));
}

// A relative folder is created, so it is no fault that it is not there.
void frmArchive::LookAtFolder() {
    const bool may = QDir::isRelativePath(txtFolder->Folder()) && !txtFolder->text().isEmpty();
    const bool wanted = chkArchive->isChecked();
    background.Run([this, wanted, may, folder = Folder()]() -> std::function<void()> {
        const bool there = !folder.isEmpty() && QFileInfo(folder).isDir();
        const ArchiveSum sum = there ? ArchiveFolder(folder).Sum() : ArchiveSum();
        return [this, sum, missing = wanted && !there && !may] {
            lblMissing->setText(missing ? Text("Missing") : QString());
            lblSpace->setText(SpaceText(sum));
        };
    });
}

QString frmArchive::SpaceText(const ArchiveSum& sum) const {
    const QLocale& locale = Core().PictureValues.Locale;
    const Settings& values = Core().State.Values;
    const auto& published = Core().State.Published;
    qint64 size = published ? QFileInfo(published->File).size() : 0;
    if (sum.Pictures > 0) size = sum.Bytes / sum.Pictures;
    QString text = Text("Space").arg(locale.toString(sum.Pictures), SizeText(locale, sum.Bytes));
    constexpr qint64 day = 86'400'000;
    const qint64 interval = qMax(qint64{1}, values.TotalInterval() * values.ArchiveEvery);
    if (size > 0) text += u' ' + Text("ADay").arg(SizeText(locale, day / interval * size));
    return text;
}
