#pragma once

#include "ui/menu/links.h"

#include <QWidget>

class QLabel;
class QPushButton;
class Texts;
struct MainState;

// Offers to download the help pages when they are missing.
class frmDownloadHilfe : public QWidget {
    Q_OBJECT

  public:
    // All outlive the window.
    frmDownloadHilfe(const MainState& state, Texts& ownTexts, const Opener& opener);

    QLabel* Label1;
    QPushButton* btnAccept;
    QPushButton* btnCancel;

    void Show();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ShowTexts();

    Texts& texts;
};
