#pragma once

#include "ui/menu/links.h"
#include "ui/menu/menu_panel.h"

class Texts;

// Links to the project's pages, a fly-out of the options menu.
class frmWeb : public MenuPanel {
    Q_OBJECT

  public:
    // Both outlive the window; parent: the main window.
    frmWeb(Texts& ownTexts, const Opener& opener, QWidget* parent);

  signals:
    // A link was clicked: the menu goes before it opens.
    void Choosing();

  private:
    void ShowTexts();

    Texts& texts;
};
