#pragma once

#include "picture/bitmap_bytes.h"

#include <QImage>

// A JPEG file taken apart again.
struct DecodedJpeg {
    QByteArray Bytes;
    QImage Picture = QImage::fromData(Bytes, "JPG");  // null: not a JPEG

    // The first entry of the quantisation table is 6 at quality 80.
    [[nodiscard]] bool HasQuality80() const { return Bytes.at(Bytes.indexOf("\xFF\xDB") + 5) == 6; }

    // Whether the pixel is this colour but for the losses of the encoding.
    [[nodiscard]] bool Shows(int x, int y, const QColor& colour, int tolerance = 12) const {
        const QColor seen = Picture.pixelColor(x, y);
        return qAbs(seen.red() - colour.red()) <= tolerance &&
               qAbs(seen.green() - colour.green()) <= tolerance &&
               qAbs(seen.blue() - colour.blue()) <= tolerance;
    }
};

// A frame of four plain quarters, none like another: red, green / blue, white.
inline QImage FourQuarters(int width, int height) {
    QImage frame(width, height, QImage::Format_BGR888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool left = x < width / 2;
            const bool upper = y < height / 2;
            frame.setPixelColor(
                x, y, upper ? (left ? Qt::red : Qt::green) : (left ? Qt::blue : Qt::white));
        }
    return frame;
}
