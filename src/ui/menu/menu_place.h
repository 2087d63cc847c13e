#pragma once

#include <QRect>

// Where the options menu and the windows beside it come to lie; everything in pixels of the
// desktop, the screen being the whole rectangle of the one that shows the button.

// The top left corner of the menu: right of the button, left of it where the right has no room, and
// always whole on the screen.
[[nodiscard]] QPoint MenuPlace(const QRect& button, const QSize& menu, const QRect& screen);

// The top left corner of the fly-out of an entry (1, 5 or 7): right of the menu while it ends
// before the screen does, else left of it; lined up with its entry.
[[nodiscard]] QPoint FlyOutPlace(const QRect& menu, const QSize& flyOut, int entry,
                                 const QRect& screen);

// The same place moved up, and in, until the fly-out is whole on the screen.
[[nodiscard]] QPoint OntoScreen(const QPoint& place, const QSize& flyOut, const QRect& screen);

namespace MenuLines {
// What lies between the entries of the menu, so that the fly-outs line up with theirs.
constexpr int Margin = 4;
constexpr int Gap = 4;          // between settings and help
constexpr int BehindEntry = 5;  // where the gap is
}  // namespace MenuLines
