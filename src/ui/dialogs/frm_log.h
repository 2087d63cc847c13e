#pragma once

#include "base/clock.h"
#include "ui/dialogs/lines_window.h"
#include "ui/menu/links.h"

// The newest lines of the log, which it follows while it is shown.
class frmLog : public LinesWindow {
    Q_OBJECT

  public:
    // ownFolder: the program folder. Texts, clock and opener outlive the window.
    frmLog(const QString& ownFolder, Clock& clock, Texts& ownTexts, const Opener& ownOpener);

    QPushButton* btnFolder;

  protected:
    void ShowTexts() override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void ShowLines();

    QString folder;
    Timer refresh;
};
