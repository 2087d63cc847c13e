#pragma once

#include "ui/menu/menu_panel.h"

class Languages;
class SkinFolders;
class Texts;
class Waiting;

// The language chooser, a fly-out of the options menu: the language in use is checked, a click on
// another changes every window at once and writes it to the settings.
class frmLanguage : public MenuPanel {
    Q_OBJECT

  public:
    // All outlive the window; parent: the main window.
    frmLanguage(Languages& ownLanguages, Texts& ownTexts, const SkinFolders& skinFolders,
                Waiting& ownWaiting, QWidget* parent);

  signals:
    // A language was clicked: the menu goes before anything changes.
    void Choosing();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void Mark();
    void Choose(int index);

    Languages& languages;
    Texts& texts;
    const SkinFolders& folders;
    Waiting& waiting;
};
