#pragma once

#include <QRect>

// Where the options menu and the windows beside it come to lie; everything in pixels of the
// desktop, the screen being the whole rectangle of the one that shows the button.

// The top left corner of the menu: right of the button, left of it where the right has no room, and
// always whole on the screen.
[[nodiscard]] QPoint MenuPlace(const QRect& button, const QSize& menu, const QRect& screen);

// The top left corner of the fly-out of an entry: right of the menu while it ends before the screen
// does, else left of it; lined up with its entry, which is so far down in the menu.
[[nodiscard]] QPoint FlyOutPlace(const QRect& menu, const QSize& flyOut, int down,
                                 const QRect& screen);

// The same place moved up, and in, until the fly-out is whole on the screen.
[[nodiscard]] QPoint OntoScreen(const QPoint& place, const QSize& flyOut, const QRect& screen);

namespace MenuLines {
// What lies between the entries of the menu: with lines of 20 pixels those that have a fly-out
// begin 24, 104 and 148 pixels (360, 1560 and 2220 twips) down.
constexpr int Margin = 4;
constexpr int Gap = 4;          // between settings and help
constexpr int BehindEntry = 5;  // where the gap is
}  // namespace MenuLines
