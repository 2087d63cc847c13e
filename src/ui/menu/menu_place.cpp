#include "ui/menu/menu_place.h"

#include "ui/skin/skin_layout.h"
#include "ui/skin/window_place.h"

namespace {

// From the menu's top to the fly-out's, in twips.
int TwipsDown(int entry) {
    constexpr int language = 360;
    constexpr int skins = 1560;
    constexpr int web = 2220;
    return entry == 1 ? language : entry == 5 ? skins : web;
}

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

QPoint FlyOutPlace(const QRect& menu, const QSize& flyOut, int entry, const QRect& screen) {
    const int right = Behind(menu.left(), menu.width());
    const bool fits = right + flyOut.width() < Behind(screen.left(), screen.width());
    return {fits ? right : menu.left() - flyOut.width(),
            menu.top() + SkinLayout::FromTwips(TwipsDown(entry))};
}

QPoint OntoScreen(const QPoint& place, const QSize& flyOut, const QRect& screen) {
    return WindowPlace::OntoScreen({place, flyOut}, {screen});
}
