#include "camera/capture_format.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr double leastRate = 5;
constexpr double usualRate = 30;  // more only costs bandwidth on the bus

bool FastEnough(const CaptureFormat& format, double rate) {
    // Cameras tell 29.97 or 4.99 where they mean the round number.
    return format.Rate <= 0 || format.Rate > rate - 0.1;
}

qint64 Area(const CaptureFormat& format) {
    return qint64(format.Width) * format.Height;
}

template <class Rank>
CaptureFormat Best(const QList<CaptureFormat>& offered, Rank rank) {
    return *std::ranges::max_element(offered, std::less<>(), rank);
}

CaptureFormat Largest(const QList<CaptureFormat>& offered) {
    return Best(offered, [](const CaptureFormat& format) {
        const bool fits = format.Width <= 1920 && format.Height <= 1080;
        // Where nothing fits, the smallest is the nearest to it.
        return std::tuple(fits, fits && FastEnough(format, leastRate),
                          fits ? Area(format) : -Area(format), !format.Compressed, format.Rate);
    });
}

CaptureFormat Nearest(const QList<CaptureFormat>& offered, const FormatWish& wish) {
    const double rate = wish.Rate > 0 ? wish.Rate : leastRate;
    return Best(offered, [&wish, rate](const CaptureFormat& format) {
        const int away =
            std::abs(format.Width - wish.Width) + std::abs(format.Height - wish.Height);
        return std::tuple(-away, FastEnough(format, rate), !format.Compressed, format.Rate);
    });
}

// Some cameras do not open at all when they are asked for a rate that they do not have, be it 30
// instead of 29.996.
double RateFor(const CaptureFormat& format, double wanted) {
    if (format.Rates.isEmpty()) return wanted;
    return *std::ranges::min_element(format.Rates, std::less<>(),
                                     [wanted](double rate) { return std::abs(rate - wanted); });
}

}  // namespace

std::optional<FormatWish> ParseFormatWish(const QString& text) {
    static const QRegularExpression form(
        QStringLiteral(R"(^\s*(\d{1,5})\s*[xX]\s*(\d{1,5})\s*(?:@\s*(\d{1,3}(?:\.\d+)?)\s*)?$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return std::nullopt;
    const FormatWish wish{match.captured(1).toInt(), match.captured(2).toInt(),
                          match.captured(3).toDouble()};
    if (wish.Width < 1 || wish.Height < 1) return std::nullopt;
    return wish;
}

std::optional<CaptureFormat> ChooseCaptureFormat(const QList<CaptureFormat>& offered,
                                                 const QString& asked) {
    const std::optional<FormatWish> wish = ParseFormatWish(asked);
    if (offered.isEmpty()) {
        if (!wish) return std::nullopt;
        return CaptureFormat{
            .Width = wish->Width, .Height = wish->Height, .Rate = wish->Rate, .PixelFormat = {}};
    }
    CaptureFormat chosen = wish ? Nearest(offered, *wish) : Largest(offered);
    chosen.Rate =
        RateFor(chosen, wish && wish->Rate > 0 ? wish->Rate : std::min(chosen.Rate, usualRate));
    return chosen;
}
