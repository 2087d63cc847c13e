#pragma once

#include "base/clock.h"
#include "ui/menu/menu_panel.h"

#include <functional>
#include <map>

class Texts;
struct MainState;
class Waiting;

// The options menu: a dozen entries, three of which open a window beside the menu. It goes when an
// entry is chosen, with Escape and with a click anywhere else. Everything works with the keyboard:
// Up and Down, Enter, Right into a fly-out, Left and Escape back.
class frmMenue : public MenuPanel {
    Q_OBJECT

  public:
    enum Entry {
        Status,
        Language,
        Ftp,
        Camera,
        Overlay,
        Skins,
        Help,
        Web,
        Info,
        Guide,
        Visitors,
        Hours,
        Archive,
        Film,
        AnotherCamera,
        Count
    };

    // All outlive the menu; parent: the main window. mainState: tells whether the menu is open.
    frmMenue(Texts& ownTexts, Waiting& ownWaiting, MainState& mainState, QWidget* parent);
    ~frmMenue() override;

    // The window beside an entry (1, 5 or 7); it outlives the menu.
    struct FlyOut {
        QWidget* Window = nullptr;
        std::function<void()> Fit;  // gives it the size of what it lists now
        std::function<void(const QPoint& topLeft)> Show;
        std::function<void()> Focus;  // gives one of its lines the keyboard
    };
    void AddFlyOut(Entry entry, const FlyOut& flyOut);
    void AddFlyOut(Entry entry, MenuPanel& panel);

    // Opens the menu beside the button (pixels of the desktop), on the screen that shows it; an
    // open menu closes.
    void OpenBeside(const QRect& button);
    // Hides the menu and its fly-outs.
    void CloseAll();

  signals:
    // An entry without a fly-out was chosen; the menu is gone by then.
    void Chosen(frmMenue::Entry entry);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ShowTexts();
    void Choose(Entry entry);
    void Hover(Entry entry);
    void ShowFlyOut(Entry entry, bool focused);
    void PlaceFlyOut(Entry entry);
    void HideFlyOuts();
    void LeaveFlyOut();
    void CloseWhenLeft();
    [[nodiscard]] bool Owns(const QWidget& window) const;
    [[nodiscard]] bool IsOpen(const QWidget& window) const;
    [[nodiscard]] bool HandBack(const QWidget& widget, QEvent& event);
    [[nodiscard]] QRect ScreenRect() const;
    [[nodiscard]] bool PressedOutside(const QWidget& widget);

    Texts& texts;
    Waiting& waiting;
    MainState& state;
    std::map<Entry, FlyOut> flyOuts;
    QRect openedBeside;
    int openEntry = -1;
    Timer keyboardRest;
};
