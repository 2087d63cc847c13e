#pragma once

#include "ui/skin/skin_folders.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

class MenuRow;
class MessageBoxes;
class Program;
class QVBoxLayout;
class Skin;
class SkinnedWindow;

// The skin chooser: a row for each skin folder, the one in use checked. A click dresses all windows
// in the skin at once and writes it to the settings. Arrow keys, Enter and Escape work as well.
class frmOberflaeche : public QWidget {
    Q_OBJECT

  public:
    // All outlive the chooser.
    frmOberflaeche(Program& ownProgram, const SkinFolders& skinFolders, MessageBoxes& messageBoxes);

    QList<MenuRow*> Label1;

    // A window that changes with the skin; it outlives the chooser.
    void AddWindow(SkinnedWindow& window);

    // Lists the skins anew and takes the size that they need.
    void Fit();
    // Does that and shows the chooser with its top left corner here (pixels of the desktop), moved
    // up where it would hang over the bottom of the screen.
    void Show(const QPoint& topLeft);
    // Gives the skin in use the keyboard.
    void FocusRow();

    // Where the top edge comes to lie on a screen; all in pixels.
    [[nodiscard]] static int TopOnScreen(int top, int height, const QRect& screen);

  signals:
    // A skin was clicked: a menu that is open beside the chooser goes.
    void Choosing();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ListSkins();
    void MarkCurrent();
    void Choose(const QString& name);
    void Dress(Skin& skin);

    Program& program;
    const SkinFolders& folders;
    MessageBoxes& boxes;
    std::vector<SkinnedWindow*> windows;
    QVBoxLayout* rows;
    bool busy = false;
};
