#include "ui/menu/frm_download_hilfe.h"

#include "core/main_state.h"
#include "texts/texts.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmDownloadHilfe::frmDownloadHilfe(const MainState& state, Texts& ownTexts, const Opener& opener)
    : QWidget(nullptr, Qt::Dialog),
      Label1(new QLabel(this)),
      btnAccept(new QPushButton(this)),
      btnCancel(new QPushButton(this)),
      texts(ownTexts) {
    auto* all = new QVBoxLayout(this);
    auto* buttons = new QHBoxLayout;
    all->addWidget(Label1);
    all->addLayout(buttons);
    buttons->addStretch();
    buttons->addWidget(btnAccept);
    buttons->addWidget(btnCancel);
    btnAccept->setAutoDefault(true);
    btnCancel->setAutoDefault(true);
    connect(btnAccept, &QPushButton::clicked, this, [this, &state, &opener] {
        hide();
        opener(state.LangEnglish || state.LangFrench ? Links::HelpInstaller
                                                     : Links::GermanHelpInstaller);
    });
    connect(btnCancel, &QPushButton::clicked, this, &QWidget::hide);
    connect(&texts, &Texts::Changed, this, &frmDownloadHilfe::ShowTexts);
    ShowTexts();
}

void frmDownloadHilfe::ShowTexts() {
    const auto text = [this](const QString& key) { return texts.Get("frmDownloadHilfe", key); };
    setWindowTitle(text("Title"));
    Label1->setText(text("Line1") + "\r\n" + text("Line2"));
    btnAccept->setText(text("Accept"));
    btnCancel->setText(text("Cancel"));
}

void frmDownloadHilfe::Show() {
    show();
    raise();
    activateWindow();
    btnAccept->setFocus();
}

void frmDownloadHilfe::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}
