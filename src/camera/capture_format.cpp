#include "camera/capture_format.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr double leastRate = 5;
constexpr double usualRate = 15;   // more than the preview shows only costs bandwidth on the bus
constexpr double tolerance = 0.1;  // cameras tell 29.97 or 4.99 where they mean the round number
// So many raw pictures take as long to be copied as one JPEG to be decoded, and that happens once a
// second at most while there is no preview (1920x1080: 0.65 ms each, and 8 to 12 ms).
constexpr double copiesForADecode = 15;

bool FastEnough(const CaptureFormat& format, double rate) {
    return format.Rate <= 0 || format.Rate > rate - tolerance;
}

// The rate to ask for. Some cameras do not open at all when they are asked for one that they do not
// have, be it 30 instead of 29.996.
double RateFor(const CaptureFormat& format, double asked) {
    const double wanted = asked > 0 ? asked : std::min(format.Rate, usualRate);
    if (format.Rates.isEmpty()) return wanted;
    const double least = std::min(leastRate, wanted) - tolerance;
    return *std::ranges::min_element(format.Rates, std::less<>(), [wanted, least](double rate) {
        return std::pair(rate < least, std::abs(rate - wanted));
    });
}

// The more, the less processor time goes into pictures that come in this format. Of JPEGs only
// those that somebody wants to have are decoded; the pictures of other codecs are made from each
// other.
int Thrift(const CaptureFormat& format, double asked) {
    enum { Coded, ManyCopies, Jpeg, FewCopies };
    if (format.PixelFormat == QLatin1String("mjpeg")) return Jpeg;
    if (format.Compressed) return Coded;
    return RateFor(format, asked) <= copiesForADecode + tolerance ? FewCopies : ManyCopies;
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
                          fits ? Area(format) : -Area(format), Thrift(format, 0), format.Rate);
    });
}

CaptureFormat Nearest(const QList<CaptureFormat>& offered, const FormatWish& wish) {
    const double rate = wish.Rate > 0 ? wish.Rate : leastRate;
    return Best(offered, [&wish, rate](const CaptureFormat& format) {
        const int away =
            std::abs(format.Width - wish.Width) + std::abs(format.Height - wish.Height);
        return std::tuple(-away, FastEnough(format, rate), Thrift(format, wish.Rate), format.Rate);
    });
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
    chosen.Rate = RateFor(chosen, wish ? wish->Rate : 0);
    return chosen;
}
