#pragma once

#include "core/hang_up_question.h"

#include <QDialog>

class Program;
class QCheckBox;
class QLabel;
class QPushButton;
class Texts;

// The question on the way out whether the connection that the program dialled is to be ended. Both
// buttons end the program; closing the window in another way leaves it running.
class frmMsg : public QDialog, public HangUpQuestion {
    Q_OBJECT

  public:
    // Both outlive the window.
    frmMsg(Program& ownProgram, Texts& ownTexts, QWidget* parent);
    ~frmMsg() override;

    QLabel* lblQuestion;
    QLabel* lblEnds;  // what the two buttons do
    QCheckBox* chkAlways;
    QPushButton* btnOk;
    QPushButton* btnClose;

    void Ask(const QString& entry) override;

  public slots:
    void accept() override;

  private:
    void ShowTexts();
    void KeepLine();

    Program& program;
    Texts& texts;
    QString connection;
};
