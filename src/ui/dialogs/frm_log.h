#pragma once

#include "base/clock.h"
#include "ui/menu/links.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class Texts;

// The newest lines of the log, which it follows while it is shown.
class frmLog : public QWidget {
    Q_OBJECT

  public:
    // ownFolder: the program folder. Texts, clock and opener outlive the window.
    frmLog(const QString& ownFolder, Clock& clock, Texts& ownTexts, const Opener& ownOpener);

    QPlainTextEdit* txtLines;
    QPushButton* btnFolder;
    QPushButton* btnClose;

    void Show();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ShowTexts();
    void ShowLines();

    QString folder;
    Texts& texts;
    QLabel* caption;
    Timer refresh;
};
