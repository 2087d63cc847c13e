#include "ui/dialogs/frm_log.h"

#include "core/log/log_file.h"
#include "texts/texts.h"
#include "ui/widgets/screen_room.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QUrl>

namespace {

constexpr int mostLines = 200;
constexpr int refreshMilliseconds = 2000;
constexpr QSize usualSize(760, 420);

}  // namespace

frmLog::frmLog(const QString& ownFolder, Clock& clock, Texts& ownTexts, const Opener& ownOpener)
    : txtLines(new QPlainTextEdit(this)),
      btnFolder(new QPushButton(this)),
      btnClose(new QPushButton(this)),
      folder(ownFolder),
      texts(ownTexts),
      caption(new QLabel(this)),
      refresh(clock, refreshMilliseconds) {
    auto* all = new QVBoxLayout(this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnFolder);
    buttons->addStretch(1);
    buttons->addWidget(btnClose);
    all->addWidget(caption);
    all->addWidget(txtLines, 1);
    all->addLayout(buttons);
    txtLines->setReadOnly(true);
    txtLines->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtLines->setTabChangesFocus(true);
    caption->setBuddy(txtLines);
    btnFolder->setAutoDefault(true);
    btnClose->setAutoDefault(true);
    connect(btnFolder, &QPushButton::clicked, this,
            [this, &ownOpener] { ownOpener(QUrl::fromLocalFile(folder)); });
    connect(btnClose, &QPushButton::clicked, this, &QWidget::hide);
    connect(&texts, &Texts::Changed, this, &frmLog::ShowTexts);
    connect(&refresh, &Timer::Tick, this, &frmLog::ShowLines);
    ShowTexts();
}

void frmLog::ShowTexts() {
    const auto text = [this](const QString& key) { return texts.Get("frmLog", key); };
    setWindowTitle(text("Title"));
    caption->setText(text("Lines"));
    txtLines->setAccessibleName(text("Lines"));
    txtLines->setPlaceholderText(text("Empty"));
    btnFolder->setText(text("OpenFolder"));
    btnClose->setText(text("Close"));
}

void frmLog::Show() {
    if (!isVisible()) resize(usualSize.expandedTo(sizeHint()).boundedTo(ScreenRoom(*this)));
    isMinimized() ? showNormal() : show();
    raise();
    activateWindow();
    btnClose->setFocus();
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
    QWidget::showEvent(event);
    txtLines->clear();
    ShowLines();
    refresh.SetEnabled(true);
}

void frmLog::hideEvent(QHideEvent* event) {
    refresh.SetEnabled(false);
    QWidget::hideEvent(event);
}

void frmLog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}
