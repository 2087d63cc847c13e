#include "picture/overlay/text_style.h"

#include <algorithm>
#include <array>

namespace {

constexpr double PixelsPerPoint = 96.0 / 72.0;
constexpr int LeastUsualPixels = 12;
constexpr int UsualLinesOnPicture = 30;
constexpr std::array Cells{2, 0, 1, 8, 6, 7, 4};

}  // namespace

int FontPixels(double points, int pictureHeight) {
    return points == 0 ? UsualFontPixels(pictureHeight)
                       : std::max(1, qRound(points * PixelsPerPoint));
}

int UsualFontPixels(int pictureHeight) {
    return std::max(LeastUsualPixels, pictureHeight / UsualLinesOnPicture);
}

QColor Readable(const QColor& text, const QColor& background) {
    if (text != background) return text;
    return qGray(background.rgb()) < 128 ? Qt::white : Qt::black;
}

int CellOf(OverlayPlace place) {
    return Cells.at(static_cast<std::size_t>(place));
}
