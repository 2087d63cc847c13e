#include "ui/menu/menu_place.h"

#include "ui/skin/window_place.h"

namespace {

int Behind(int begin, int length) {
    return begin + length;
}

}  // namespace

QPoint MenuPlace(const QRect& button, const QSize& menu, const QRect& screen) {
    const int right = Behind(button.left(), button.width());
    const bool fits = right + menu.width() <= Behind(screen.left(), screen.width());
    const QPoint place(fits ? right : button.left() - menu.width(), button.top());
    return OntoScreen(place, menu, screen);
}

QPoint FlyOutPlace(const QRect& menu, const QSize& flyOut, int down, const QRect& screen) {
    const int right = Behind(menu.left(), menu.width());
    const bool fits = right + flyOut.width() < Behind(screen.left(), screen.width());
    return {fits ? right : menu.left() - flyOut.width(), menu.top() + down};
}

QPoint OntoScreen(const QPoint& place, const QSize& flyOut, const QRect& screen) {
    return WindowPlace::OntoScreen({place, flyOut}, {screen});
}
