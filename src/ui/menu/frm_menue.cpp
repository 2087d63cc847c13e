#include "ui/menu/frm_menue.h"

#include "base/waiting.h"
#include "core/main_state.h"
#include "texts/texts.h"
#include "ui/menu/menu_place.h"
#include "ui/skin/window_system.h"
#include "ui/widgets/menu_row.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace {
constexpr int restMilliseconds = 200;
}  // namespace

frmMenue::frmMenue(Texts& ownTexts, Waiting& ownWaiting, MainState& mainState, QWidget* parent)
    : MenuPanel(parent),
      texts(ownTexts),
      waiting(ownWaiting),
      state(mainState),
      keyboardRest(ownWaiting.OwnClock(), restMilliseconds) {
    // A click beside a popup only closes it: where windows do not know their places, it would be
    // repeated in any of them.
    setAttribute(Qt::WA_NoMouseReplay);
    for (int i = 0; i < Count; ++i) {
        const auto entry = static_cast<Entry>(i);
        if (i == MenuLines::BehindEntry + 1 || entry == Guide) AddGap(MenuLines::Gap);
        const MenuRow& row = AddRow();
        connect(&row, &MenuRow::clicked, this, [this, entry] { Choose(entry); });
        connect(&row, &MenuRow::Entered, this, [this, entry] { Hover(entry); });
    }
    connect(&texts, &Texts::Changed, this, &frmMenue::ShowTexts);
    // When it has come to rest: the keyboard has no window, or any other, on its way between ours.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow*) {
        keyboardRest.SetInterval(restMilliseconds);
        keyboardRest.SetEnabled(state.MenuOpen);
    });
    connect(&keyboardRest, &Timer::Tick, this, &frmMenue::CloseWhenLeft);
    ShowTexts();
}

frmMenue::~frmMenue() {
    // Its window takes the keyboard along when it goes, after the timer.
    disconnect(qApp, nullptr, this, nullptr);
    qApp->removeEventFilter(this);
}

void frmMenue::ShowTexts() {
    setWindowTitle(texts.Get("frmMenue", "Title"));
    for (int i = 0; i < Count; ++i)
        Label1[i]->setText(texts.Get("frmMenue", "Label" + QString::number(i)));
}

void frmMenue::AddFlyOut(Entry entry, const FlyOut& flyOut) {
    flyOuts[entry] = flyOut;
    Label1[entry]->SetHasFlyOut(true);
}

void frmMenue::AddFlyOut(Entry entry, MenuPanel& panel) {
    const auto show = [this, &panel](const QPoint& topLeft) {
        panel.move(OntoScreen(topLeft, panel.size(), ScreenRect()));
        panel.show();
    };
    AddFlyOut(entry,
              {&panel, [&panel] { panel.adjustSize(); }, show, [&panel] { panel.FocusRow(); }});
}

QRect frmMenue::ScreenRect() const {
    const QScreen* screen = QGuiApplication::screenAt(openedBeside.center());
    return (screen ? screen : QGuiApplication::primaryScreen())->geometry();
}

void frmMenue::OpenBeside(const QRect& button) {
    if (state.MenuOpen) {
        CloseAll();
        return;
    }
    openedBeside = button;
    adjustSize();
    move(MenuPlace(button, size(), ScreenRect()));
    state.MenuOpen = true;
    qApp->installEventFilter(this);
    show();
    raise();
    activateWindow();
    Label1[0]->setFocus(Qt::PopupFocusReason);
}

void frmMenue::CloseAll() {
    if (!state.MenuOpen) return;
    state.MenuOpen = false;
    keyboardRest.SetEnabled(false);
    qApp->removeEventFilter(this);
    HideFlyOuts();
    hide();
}

void frmMenue::Choose(Entry entry) {
    if (flyOuts.contains(entry)) {
        ShowFlyOut(entry, true);
        return;
    }
    CloseAll();
    waiting.Yield();
    emit Chosen(entry);
}

void frmMenue::Hover(Entry entry) {
    if (!state.MenuOpen || openEntry == entry) return;
    if (flyOuts.contains(entry)) {
        ShowFlyOut(entry, false);
    } else if (openEntry >= 0) {
        LeaveFlyOut();
        Label1[entry]->setFocus(Qt::MouseFocusReason);
    }
}

void frmMenue::ShowFlyOut(Entry entry, bool focused) {
    const FlyOut& flyOut = flyOuts[entry];
    if (openEntry != entry) {
        if (openEntry >= 0) LeaveFlyOut();
        openEntry = entry;
        Label1[entry]->SetOpen(true);
        PlaceFlyOut(entry);
    }
    if (focused) {
        flyOut.Window->activateWindow();
        flyOut.Focus();
    } else {
        activateWindow();
        Label1[entry]->setFocus(Qt::MouseFocusReason);
    }
}

void frmMenue::PlaceFlyOut(Entry entry) {
    const FlyOut& flyOut = flyOuts[entry];
    flyOut.Fit();
    if (!WindowSystem::PlacesWindows()) {
        flyOut.Window->winId();  // makes the handle
        flyOut.Window->windowHandle()->setTransientParent(windowHandle());
    }
    flyOut.Show(FlyOutPlace(geometry(), flyOut.Window->size(), Label1[entry]->y(), ScreenRect()));
    flyOut.Window->raise();
}

void frmMenue::HideFlyOuts() {
    openEntry = -1;
    for (MenuRow* row : Label1) row->SetOpen(false);
    for (const auto& [entry, flyOut] : flyOuts) flyOut.Window->hide();
}

void frmMenue::LeaveFlyOut() {
    const int left = openEntry;
    // In this order: hidden with the keyboard, the fly-out would hand it to any other window.
    activateWindow();
    HideFlyOuts();
    if (left >= 0) Label1[left]->setFocus(Qt::PopupFocusReason);
}

bool frmMenue::Owns(const QWidget& window) const {
    return &window == this || std::any_of(flyOuts.begin(), flyOuts.end(), [&](const auto& each) {
        return each.second.Window == &window;
    });
}

void frmMenue::CloseWhenLeft() {
    keyboardRest.SetEnabled(false);
    const auto owned = [this](const QWidget* window) { return window && Owns(*window); };
    if (!owned(QApplication::activePopupWidget()) && !owned(QApplication::activeWindow()))
        CloseAll();
}

bool frmMenue::IsOpen(const QWidget& window) const {
    return &window == this ||
           (openEntry >= 0 && flyOuts.at(static_cast<Entry>(openEntry)).Window == &window);
}

// Closes the menu. True when the press must not count: on the button it would open the menu again.
bool frmMenue::PressedOutside(const QWidget& widget) {
    CloseAll();
    return QRect(widget.mapToGlobal(QPoint()), widget.size()) == openedBeside;
}

// All input comes to the popup that opened last. What is not meant for a fly-out goes back to the
// menu: the mouse over its lines, and keys while one of them has the keyboard.
bool frmMenue::HandBack(const QWidget& widget, QEvent& event) {
    if (QApplication::activePopupWidget() != widget.window()) return false;
    if (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease) {
        QWidget* focus = QApplication::focusWidget();
        return focus && focus->window() == this && QCoreApplication::sendEvent(focus, &event);
    }
    if (event.type() != QEvent::MouseMove && event.type() != QEvent::MouseButtonPress &&
        event.type() != QEvent::MouseButtonRelease)
        return false;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const QPoint at = mapFromGlobal(mouse.globalPosition().toPoint());
    if (!rect().contains(at)) return false;
    QWidget* line = childAt(at);
    if (!line) line = this;
    QMouseEvent there(mouse.type(), line->mapFrom(this, at), mouse.globalPosition(), mouse.button(),
                      mouse.buttons(), mouse.modifiers());
    QCoreApplication::sendEvent(line, &there);
    return true;
}

bool frmMenue::eventFilter(QObject* object, QEvent* event) {
    const auto* widget = qobject_cast<QWidget*>(object);
    if (!widget || !state.MenuOpen) return MenuPanel::eventFilter(object, event);
    const bool owned = Owns(*widget->window());
    const bool inFlyOut = owned && widget->window() != this;
    if (inFlyOut && HandBack(*widget, *event)) return true;
    if (event->type() == QEvent::MouseButtonPress && !owned) return PressedOutside(*widget);
    // A popup that the desktop or a press beside it has closed.
    if (event->type() == QEvent::Hide && !event->spontaneous() && IsOpen(*widget)) CloseAll();
    if (event->type() == QEvent::KeyPress && inFlyOut) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Left || key == Qt::Key_Escape) {
            LeaveFlyOut();
            return true;
        }
    }
    return MenuPanel::eventFilter(object, event);
}

void frmMenue::keyPressEvent(QKeyEvent* event) {
    const auto entry = static_cast<Entry>(Label1.indexOf(qobject_cast<MenuRow*>(focusWidget())));
    if (event->key() == Qt::Key_Escape)
        openEntry >= 0 ? LeaveFlyOut() : CloseAll();
    else if (event->key() == Qt::Key_Left && openEntry >= 0)
        LeaveFlyOut();
    else if (event->key() == Qt::Key_Right && flyOuts.contains(entry))
        ShowFlyOut(entry, true);
    else
        MenuPanel::keyPressEvent(event);
}
