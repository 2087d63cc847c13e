#pragma once

#include <QPalette>

// Colours that can be seen on what is below them, for desktops of any palette.
namespace Contrast {

// Whether writing on it is to be light.
[[nodiscard]] bool IsDark(const QColor& ground);

// For the outlines of what stands on a window: half-way between its colour and that of its text.
[[nodiscard]] QColor Outline(const QPalette& colours);

}  // namespace Contrast
