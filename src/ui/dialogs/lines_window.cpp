#include "ui/dialogs/lines_window.h"

#include "texts/texts.h"
#include "ui/widgets/screen_room.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

constexpr QSize usualSize(760, 420);

}  // namespace

LinesWindow::LinesWindow(Texts& ownTexts, const QString& ownSection)
    : txtLines(new QPlainTextEdit(this)),
      btnClose(new QPushButton(this)),
      texts(ownTexts),
      section(ownSection),
      caption(new QLabel(this)),
      buttons(new QHBoxLayout) {
    auto* all = new QVBoxLayout(this);
    buttons->addStretch(1);
    buttons->addWidget(btnClose);
    all->addWidget(caption);
    all->addWidget(txtLines, 1);
    all->addLayout(buttons);
    txtLines->setReadOnly(true);
    txtLines->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtLines->setTabChangesFocus(true);
    caption->setBuddy(txtLines);
    caption->setWordWrap(true);
    btnClose->setAutoDefault(true);
    connect(btnClose, &QPushButton::clicked, this, &QWidget::hide);
    connect(&texts, &Texts::Changed, this, [this] { ShowTexts(); });
}

QPushButton* LinesWindow::AddButton() {
    auto* button = new QPushButton(this);
    button->setAutoDefault(true);
    buttons->insertWidget(buttons->count() - 2, button);
    setTabOrder(button, btnClose);
    return button;
}

void LinesWindow::ShowTexts() {
    setWindowTitle(Text("Title"));
    SetCaption(Text("Lines"));
    btnClose->setText(Text("Close"));
}

void LinesWindow::SetCaption(const QString& text) {
    caption->setText(text);
    txtLines->setAccessibleName(text);
}

QString LinesWindow::Text(const QString& key) const {
    return texts.Get(section, key);
}

void LinesWindow::Show() {
    if (!isVisible()) resize(usualSize.expandedTo(sizeHint()).boundedTo(ScreenRoom(*this)));
    isMinimized() ? showNormal() : show();
    raise();
    activateWindow();
    btnClose->setFocus();
}

void LinesWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}
