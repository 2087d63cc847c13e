#include "ui/dialogs/frm_log.h"

#include "core/log/log_file.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QUrl>

namespace {

constexpr int mostLines = 200;
constexpr int refreshMilliseconds = 2000;

}  // namespace

frmLog::frmLog(const QString& ownFolder, Clock& clock, Texts& ownTexts, const Opener& ownOpener)
    : LinesWindow(ownTexts, "frmLog"),
      btnFolder(AddButton()),
      folder(ownFolder),
      refresh(clock, refreshMilliseconds) {
    connect(btnFolder, &QPushButton::clicked, this,
            [this, &ownOpener] { ownOpener(QUrl::fromLocalFile(folder)); });
    connect(&refresh, &Timer::Tick, this, &frmLog::ShowLines);
    frmLog::ShowTexts();
}

void frmLog::ShowTexts() {
    LinesWindow::ShowTexts();
    txtLines->setPlaceholderText(Text("Empty"));
    btnFolder->setText(Text("OpenFolder"));
}

// Who reads further up, or has marked something, is left alone.
void frmLog::ShowLines() {
    QScrollBar& bar = *txtLines->verticalScrollBar();
    const QString now = LogFile::Last(folder, mostLines).join(u'\n');
    if (now == txtLines->toPlainText() || bar.value() < bar.maximum()) return;
    txtLines->setPlainText(now);
    bar.setValue(bar.maximum());
}

void frmLog::showEvent(QShowEvent* event) {
    LinesWindow::showEvent(event);
    txtLines->clear();
    ShowLines();
    refresh.SetEnabled(true);
}

void frmLog::hideEvent(QHideEvent* event) {
    refresh.SetEnabled(false);
    LinesWindow::hideEvent(event);
}
