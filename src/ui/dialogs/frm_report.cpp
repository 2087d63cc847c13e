#include "ui/dialogs/frm_report.h"

#include "base/waiting.h"
#include "base/whole_file.h"
#include "core/program.h"
#include "core/report/report_parts.h"
#include "core/report/report_text.h"
#include "ui/widgets/file_chooser.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardPaths>

frmReport::frmReport(Program& program, Texts& ownTexts)
    : LinesWindow(ownTexts, "frmReport"),
      btnCopy(AddButton()),
      btnSave(AddButton()),
      core(program),
      words(ownTexts),
      gathering(program.Wait.OwnClock()) {
    connect(btnCopy, &QPushButton::clicked, this, [this] {
        QGuiApplication::clipboard()->setText(txtLines->toPlainText());
        SetCaption(Text("Copied"));
    });
    connect(btnSave, &QPushButton::clicked, this, &frmReport::AskWhere);
    connect(&gathering, &ReportGathering::Done, this, [this](const QList<ReportSection>& sections) {
        const QDateTime now = core.Wait.OwnClock().Now();
        txtLines->setPlainText(ReportText(words, now, sections, QDir::homePath()));
        SetReady(true);
    });
    frmReport::ShowTexts();
}

void frmReport::ShowTexts() {
    LinesWindow::ShowTexts();
    btnCopy->setText(Text("Copy"));
    btnSave->setText(Text("Save"));
}

void frmReport::Open() {
    if (!isVisible()) {
        SetReady(false);
        gathering.Begin(ReportParts({core.System(), words, core.ProgramFolder()}));
    }
    Show();
}

void frmReport::SetReady(bool ready) {
    if (!ready) txtLines->clear();
    btnCopy->setEnabled(ready);
    btnSave->setEnabled(ready);
    SetCaption(Text(ready ? QString("Lines") : "Gathering"));
}

void frmReport::AskWhere() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog& chooser = OpenFileChooser(this, QFileDialog::AnyFile, Text("Title"),
                                           QDir(folder).filePath("stillpost-report.txt"));
    chooser.setAcceptMode(QFileDialog::AcceptSave);
    connect(&chooser, &QFileDialog::fileSelected, this, &frmReport::Save);
}

void frmReport::Save(const QString& file) {
    const QByteArray bytes = txtLines->toPlainText().toUtf8();
    const bool saved = WholeFile::Replace(
        file, [&bytes](QFile& opened) { return opened.write(bytes) == bytes.size(); });
    SetCaption(Text(saved ? QString("Saved") : "CannotSave").arg(QDir::toNativeSeparators(file)));
}

// Columns stand below each other, in letters of the usual size.
void frmReport::showEvent(QShowEvent* event) {
    QFont letters = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    letters.setPointSizeF(QFontInfo(QApplication::font()).pointSizeF());
    txtLines->setFont(letters);
    LinesWindow::showEvent(event);
}
