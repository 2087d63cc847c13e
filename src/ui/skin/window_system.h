#pragma once

#include <Qt>

// What the window system lets windows do. Asked here and nowhere else.
namespace WindowSystem {

// Whether windows know and choose their place on the desktop. Under Wayland the desktop places
// them: a window believes to be at 0, 0, and moving it there has no effect.
[[nodiscard]] bool PlacesWindows();

// Whether a window ends where its mask ends. Under Wayland the mask only says what the mouse meets;
// what lies outside it must be painted transparent.
[[nodiscard]] bool CutsWindows();

// What the windows of a menu are: popups where only these come to a place beside their parent.
[[nodiscard]] Qt::WindowFlags MenuFlags();

}  // namespace WindowSystem
