#include "picture/overlay/transparent_copy.h"

#include <cstring>

namespace {

constexpr int pixelBytes = 3;

// One row by the runs of its opaque pixels: a bit of the mask does not change within a run, so each
// is one copy.
void CopyRow(uchar* to, const uchar* from, int width, const uchar* transparent) {
    const auto isTransparent = [&](int x) {
        return std::memcmp(from + x * pixelBytes, transparent, pixelBytes) == 0;
    };
    for (int x = 0; x < width;) {
        while (x < width && isTransparent(x)) ++x;
        const int start = x;
        while (x < width && !isTransparent(x)) ++x;
        std::memcpy(to + start * pixelBytes, from + start * pixelBytes,
                    static_cast<size_t>((x - start) * pixelBytes));
    }
}

// Where a rectangle of the source at `at` meets the destination, in the destination's pixels.
QRect Visible(const QImage& destination, QPoint at, QPoint from, QSize size, const QImage& source) {
    const QRect part = QRect(from, size) & source.rect();
    return part.translated(at - from) & destination.rect();
}

}  // namespace

void TransparentCopy(QImage& destination, QPoint at, QSize size, const QImage& source, QPoint from,
                     QRgb transparent) {
    const QRect visible = Visible(destination, at, from, size, source);
    if (visible.isEmpty()) return;
    const uchar key[pixelBytes] = {static_cast<uchar>(qBlue(transparent)),
                                   static_cast<uchar>(qGreen(transparent)),
                                   static_cast<uchar>(qRed(transparent))};
    const QPoint start = visible.topLeft() - at + from;
    for (int y = 0; y < visible.height(); ++y)
        CopyRow(destination.scanLine(visible.top() + y) + visible.left() * pixelBytes,
                source.constScanLine(start.y() + y) + start.x() * pixelBytes, visible.width(), key);
}
