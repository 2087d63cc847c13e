#pragma once

#include <QSize>

class QWidget;

// The largest size that a window may have, its frame left out, to be whole on its screen: pixels.
// A frame that the desktop has not put around it yet is guessed.
[[nodiscard]] QSize ScreenRoom(const QWidget& window);
