#pragma once

#include <QImage>

// The picture as it is meant to be seen. orientation: as in EXIF, how it was stored: 1 upright, 2
// mirrored, 3 upside down, 4 both, 5 to 8 on its side; any other counts as 1.
[[nodiscard]] QImage Upright(const QImage& image, int orientation);

// Whether Upright exchanges width and height.
[[nodiscard]] constexpr bool OnItsSide(int orientation) {
    return orientation >= 5 && orientation <= 8;
}
