#include "picture/transparent_copy.h"

#include <cstring>

namespace {

constexpr int PixelBytes = 3;

// One row by the runs of its opaque pixels: a bit of the mask does not change within a run, so each
// is one copy.
void CopyRow(uchar* to, const uchar* from, int width, const uchar* transparent) {
    const auto isTransparent = [&](int x) {
        return std::memcmp(from + x * PixelBytes, transparent, PixelBytes) == 0;
    };
    for (int x = 0; x < width;) {
        while (x < width && isTransparent(x)) ++x;
        const int start = x;
        while (x < width && !isTransparent(x)) ++x;
        std::memcpy(to + start * PixelBytes, from + start * PixelBytes,
                    static_cast<size_t>((x - start) * PixelBytes));
    }
}

// Where a rectangle of the source at `at` meets the destination, in the destination's pixels.
QRect Visible(const QImage& destination, QPoint at, QPoint from, QSize size, const QImage& source) {
    const QRect part = QRect(from, size) & source.rect();
    return part.translated(at - from) & destination.rect();
}

uchar Mix(int over, int under, int alpha) {
    return static_cast<uchar>((over * alpha + under * (255 - alpha) + 127) / 255);
}

}  // namespace

void TransparentCopy(QImage& destination, QPoint at, QSize size, const QImage& source, QPoint from,
                     QRgb transparent) {
    const QRect visible = Visible(destination, at, from, size, source);
    if (visible.isEmpty()) return;
    const uchar key[PixelBytes] = {static_cast<uchar>(qBlue(transparent)),
                                   static_cast<uchar>(qGreen(transparent)),
                                   static_cast<uchar>(qRed(transparent))};
    const QPoint start = visible.topLeft() - at + from;
    for (int y = 0; y < visible.height(); ++y)
        CopyRow(destination.scanLine(visible.top() + y) + visible.left() * PixelBytes,
                source.constScanLine(start.y() + y) + start.x() * PixelBytes, visible.width(), key);
}

void AlphaCopy(QImage& destination, QPoint at, const QImage& source) {
    const QRect visible = Visible(destination, at, {}, source.size(), source);
    if (visible.isEmpty()) return;
    const QPoint start = visible.topLeft() - at;
    for (int y = 0; y < visible.height(); ++y) {
        uchar* to = destination.scanLine(visible.top() + y) + visible.left() * PixelBytes;
        const auto* const row = reinterpret_cast<const QRgb*>(source.constScanLine(start.y() + y));
        for (int x = 0; x < visible.width(); ++x, to += PixelBytes) {
            const QRgb over = row[start.x() + x];
            to[0] = Mix(qBlue(over), to[0], qAlpha(over));
            to[1] = Mix(qGreen(over), to[1], qAlpha(over));
            to[2] = Mix(qRed(over), to[2], qAlpha(over));
        }
    }
}
