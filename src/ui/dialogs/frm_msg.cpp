#include "ui/dialogs/frm_msg.h"

#include "base/profile_file.h"
#include "core/program.h"
#include "texts/texts.h"
#include "ui/widgets/mnemonics.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

frmMsg::frmMsg(Program& ownProgram, Texts& ownTexts, QWidget* parent)
    : QDialog(parent),
      lblQuestion(new QLabel(this)),
      lblEnds(new QLabel(this)),
      chkAlways(new QCheckBox(this)),
      btnOk(new QPushButton(this)),
      btnClose(new QPushButton(this)),
      program(ownProgram),
      texts(ownTexts) {
    for (QLabel* label : {lblQuestion, lblEnds}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    // Broken only where it is longer than people read in one line.
    constexpr int characters = 64;
    lblQuestion->setMinimumWidth(characters * lblQuestion->fontMetrics().averageCharWidth());
    auto* all = new QVBoxLayout(this);
    all->addWidget(lblQuestion);
    all->addWidget(lblEnds);
    all->addWidget(chkAlways);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnOk);
    buttons->addWidget(btnClose);
    all->addLayout(buttons);
    btnOk->setDefault(true);
    btnClose->setAutoDefault(false);
    connect(btnOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(btnClose, &QPushButton::clicked, this, &frmMsg::KeepLine);
    connect(&texts, &Texts::Changed, this, &frmMsg::ShowTexts);
    connect(&program, &Program::Ended, this, &QWidget::hide);
    program.SetHangUpQuestion(this);
    ShowTexts();
}

frmMsg::~frmMsg() {
    program.SetHangUpQuestion(nullptr);
}

void frmMsg::ShowTexts() {
    const auto text = [this](const QString& key) { return texts.Get("frmMsg", key); };
    setWindowTitle("Stillpost");
    lblQuestion->setText(text("QuestionBefore") + connection + text("QuestionAfter"));
    lblEnds->setText(text("Ends"));
    chkAlways->setText(text("Always"));
    chkAlways->setToolTip(text("AlwaysHelp"));
    btnOk->setText(text("Ok"));
    btnOk->setToolTip(text("OkHelp"));
    btnClose->setText(text("Close"));
    btnClose->setToolTip(text("CloseHelp"));
    AssignMnemonics(*this);
    if (isVisible()) adjustSize();
}

void frmMsg::Ask(const QString& entry) {
    connection = entry;
    chkAlways->setChecked(false);
    ShowTexts();
    adjustSize();
    show();
    raise();
    activateWindow();
    btnOk->setFocus();
}

void frmMsg::accept() {
    if (chkAlways->isChecked()) program.Remember({{"Einstellungen", "Abwahl", "1"}});
    hide();
    program.Exit();
}

void frmMsg::KeepLine() {
    hide();
    program.ExitKeepingLine();
}
