#pragma once

#include <QColor>
#include <QString>

#include <optional>

// How the settings describe the look of the text. Values that make no sense give nothing, so that
// the caller can say so and take what works.

// A colour written as red + 256 x green + 65536 x blue. Nothing when the number is below 0 (colours
// of the desktop's scheme are numbered so) or above 16777215; a text without a number is black.
[[nodiscard]] std::optional<QColor> ColorOf(const QString& written);

// The height of the font in pixels for a size in points, at 96 dots per inch on every machine. Size
// 0, as when none is written, is the usual one: a thirtieth of the picture's height, at least 12
// pixels. Nothing below 0 and above 1000 points. pictureHeight: pixels.
[[nodiscard]] std::optional<int> FontPixels(const QString& size, int pictureHeight);

// The usual one.
[[nodiscard]] int UsualFontPixels(int pictureHeight);

// `text`, or black or white where it could not be told from the filled `background`.
[[nodiscard]] QColor Readable(const QColor& text, const QColor& background);

// The cell of a grid of three by three, row by row, for a position: 0 up right, 1 up left, 2 up
// middle, 3 down right, 4 down left, 5 down middle, 6 center. Nothing for any other.
[[nodiscard]] std::optional<int> CellOf(int position);
