#include "picture/overlay/text_style.h"

#include <algorithm>
#include <array>

namespace {

constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr int leastUsualPixels = 12;
constexpr int usualLinesOnPicture = 30;
constexpr std::array cells{2, 0, 1, 8, 6, 7, 4};

}  // namespace

int FontPixels(double points, int pictureHeight) {
    return points == 0 ? UsualFontPixels(pictureHeight)
                       : std::max(1, qRound(points * pixelsPerPoint));
}

int UsualFontPixels(int pictureHeight) {
    return std::max(leastUsualPixels, pictureHeight / usualLinesOnPicture);
}

QColor Readable(const QColor& text, const QColor& background) {
    if (text != background) return text;
    return qGray(background.rgb()) < 128 ? Qt::white : Qt::black;
}

int CellOf(OverlayPlace place) {
    return cells.at(static_cast<std::size_t>(place));
}
