#include "picture/overlay/text_style.h"

#include "base/profile_file.h"

#include <algorithm>
#include <array>

namespace {

constexpr int MostColor = 0xffffff;
constexpr double MostPoints = 1000;
constexpr double PixelsPerPoint = 96.0 / 72.0;
constexpr int LeastUsualPixels = 12;
constexpr int UsualLinesOnPicture = 30;
constexpr std::array Cells{2, 0, 1, 8, 6, 7, 4};

}  // namespace

std::optional<QColor> ColorOf(const QString& written) {
    const int number = ValLong(written);
    if (number < 0 || number > MostColor) return std::nullopt;
    return QColor(number & 0xff, (number >> 8) & 0xff, number >> 16);
}

std::optional<int> FontPixels(const QString& size, int pictureHeight) {
    const double points = Val(size);
    if (points < 0 || points > MostPoints) return std::nullopt;
    if (points == 0) return UsualFontPixels(pictureHeight);
    return std::max(1, qRound(points * PixelsPerPoint));
}

int UsualFontPixels(int pictureHeight) {
    return std::max(LeastUsualPixels, pictureHeight / UsualLinesOnPicture);
}

QColor Readable(const QColor& text, const QColor& background) {
    if (text != background) return text;
    return qGray(background.rgb()) < 128 ? Qt::white : Qt::black;
}

std::optional<int> CellOf(int position) {
    if (position < 0 || position >= static_cast<int>(Cells.size())) return std::nullopt;
    return Cells[static_cast<std::size_t>(position)];
}
