#pragma once

#include "picture/bitmap_bytes.h"

#include <QImage>

#include <turbojpeg.h>

// A JPEG file taken apart again.
struct DecodedJpeg {
    QImage Picture;  // null: not a whole JPEG
    int Sampling = -1;

    explicit DecodedJpeg(const QString& name) {
        const QByteArray bytes = ReadBytes(name);
        const auto* const data = reinterpret_cast<const uchar*>(bytes.constData());
        const auto size = static_cast<unsigned long>(bytes.size());
        const tjhandle decoder = tjInitDecompress();
        int width = 0;
        int height = 0;
        int colours = 0;
        if (tjDecompressHeader3(decoder, data, size, &width, &height, &Sampling, &colours) == 0) {
            QImage picture(width, height, QImage::Format_RGB888);
            if (tjDecompress2(decoder, data, size, picture.bits(), width,
                              static_cast<int>(picture.bytesPerLine()), height, TJPF_RGB, 0) == 0)
                Picture = picture;
        }
        tjDestroy(decoder);
    }

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
