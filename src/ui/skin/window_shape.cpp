#include "ui/skin/window_shape.h"

#include <QGuiApplication>
#include <QPainter>
#include <QWidget>

#include <array>
#include <cstring>
#include <vector>

namespace {

const QRgb* Row(const QImage& image, int y) {
    // The lines of a 32-bit image are aligned for it.
    return static_cast<const QRgb*>(static_cast<const void*>(image.constScanLine(y)));
}

// The stride of the scan at x.
int Step(int x, int width) {
    constexpr int outer = 150;
    constexpr int coarse = 100;
    return x <= outer || x >= width - outer ? 1 : coarse;
}

struct Run {
    int Begin;
    int End;  // behind the last pixel

    bool operator==(const Run&) const = default;
};

std::vector<Run> OpaqueRuns(const QRgb* row, int width, QRgb transparent) {
    std::vector<Run> runs;
    int x = 0;
    while (x < width) {
        while (x < width && row[x] == transparent) x += Step(x, width);
        if (x >= width) break;
        const int begin = x;
        while (x < width && row[x] != transparent) x += Step(x, width);
        runs.push_back({begin, std::min(x, width)});
    }
    return runs;
}

// Which pixels belong to the outline, with a margin of one pixel around the picture.
class PixelMask {
  public:
    PixelMask(const QSize& size, const QRegion& region)
        : width(size.width() + 2),
          bits(static_cast<std::size_t>(width) * static_cast<std::size_t>(size.height() + 2)) {
        for (const QRect& rect : region.intersected(QRect({0, 0}, size)))
            for (int y = rect.top(); y <= rect.bottom(); ++y)
                std::memset(&bits[At(rect.left(), y)], 1, static_cast<std::size_t>(rect.width()));
    }

    [[nodiscard]] bool Has(int x, int y) const { return bits[At(x, y)] != 0; }

  private:
    [[nodiscard]] std::size_t At(int x, int y) const {
        return static_cast<std::size_t>(y + 1) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x + 1);
    }

    int width;
    std::vector<unsigned char> bits;
};

// The mean colour of those of the eight neighbours that belong to the outline.
QRgb MeanOfNeighbours(const QImage& picture, const PixelMask& mask, const QPoint& at) {
    int count = 0;
    std::array<int, 3> sums{};
    for (int y = at.y() - 1; y <= at.y() + 1; ++y)
        for (int x = at.x() - 1; x <= at.x() + 1; ++x) {
            if (!mask.Has(x, y)) continue;
            const QRgb colour = Row(picture, y)[x];
            sums[0] += qRed(colour);
            sums[1] += qGreen(colour);
            sums[2] += qBlue(colour);
            ++count;
        }
    return count == 0 ? Row(picture, at.y())[at.x()]
                      : qRgb(sums[0] / count, sums[1] / count, sums[2] / count);
}

}  // namespace

QRegion BuildRegionFromPicture(const QImage& picture) {
    if (picture.isNull()) return {};
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    const QRgb transparent = Row(image, 0)[0];
    // Rows that are alike become one band of rectangles: the region is built in one go from them.
    std::vector<QRect> rects;
    std::vector<Run> band;
    std::size_t bandBegin = 0;
    for (int y = 0; y < image.height(); ++y) {
        std::vector<Run> runs = OpaqueRuns(Row(image, y), image.width(), transparent);
        if (y > 0 && runs == band) {
            for (std::size_t i = bandBegin; i < rects.size(); ++i) rects[i].setBottom(y);
            continue;
        }
        bandBegin = rects.size();
        for (const Run& run : runs) rects.emplace_back(run.Begin, y, run.End - run.Begin, 1);
        band = std::move(runs);
    }
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region;
}

QRegion ShapeWindowFromPicture(QWidget& window, const QImage& picture) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QRegion region = BuildRegionFromPicture(picture);
    window.setFixedSize(picture.size());
    if (region.isEmpty()) {
        region = QRect({0, 0}, picture.size());
        window.clearMask();
    } else {
        window.setMask(region);
    }
    QGuiApplication::restoreOverrideCursor();
    return region;
}

QImage WithCleanEdges(const QImage& picture, const QRegion& outline) {
    QImage cleaned = picture.convertToFormat(QImage::Format_RGB32);
    const QImage source = cleaned;
    const PixelMask mask(source.size(), outline);
    const auto clean = [&](int x, int y) {
        if (source.valid(x, y) && !mask.Has(x, y))
            cleaned.setPixel(x, y, MeanOfNeighbours(source, mask, {x, y}));
    };
    for (const QRect& rect : outline) {
        for (int x = rect.left() - 1; x <= rect.right() + 1; ++x) {
            clean(x, rect.top() - 1);
            clean(x, rect.bottom() + 1);
        }
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            clean(rect.left() - 1, y);
            clean(rect.right() + 1, y);
        }
    }
    return cleaned;
}

QImage CutOut(const QImage& picture, const QRegion& outline) {
    QImage cut(picture.size(), QImage::Format_ARGB32_Premultiplied);
    cut.fill(Qt::transparent);
    QPainter painter(&cut);
    painter.setClipRegion(outline);
    painter.drawImage(0, 0, picture);
    return cut;
}
