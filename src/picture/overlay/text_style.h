#pragma once

#include "picture/overlay/overlay_settings.h"

#include <QColor>

// What the settings say about the look of the text, in pixels and cells.

// The height of the font in pixels for a size of 0 to 1000 points, at 96 dots per inch on every
// machine; size 0 is the usual one. pictureHeight: pixels.
[[nodiscard]] int FontPixels(double points, int pictureHeight);

// The usual one: a thirtieth of the picture's height, at least 12 pixels.
[[nodiscard]] int UsualFontPixels(int pictureHeight);

// `text`, or black or white where it could not be told from the filled `background`.
[[nodiscard]] QColor Readable(const QColor& text, const QColor& background);

// The cell of a grid of three by three, counted row by row from 0, that a place is.
[[nodiscard]] int CellOf(OverlayPlace place);
