#include "camera/exposure_settled.h"

#include <algorithm>

namespace {
constexpr qint64 leastMilliseconds = 300;
constexpr qint64 mostMilliseconds = 3000;
constexpr int leastPictures = 3;
constexpr double steadyShare = 0.02;
constexpr double steadyLevel = 1.0;  // a night scene: two per cent of it would be noise
}  // namespace

bool ExposureSettled::Feed(qint64 elapsed, double brightness) {
    if (settled) return true;
    std::rotate(latest.begin(), latest.begin() + 1, latest.end());
    latest.back() = brightness;
    ++pictures;
    if (elapsed >= mostMilliseconds) return settled = true;
    if (elapsed < leastMilliseconds || pictures < leastPictures) return false;
    const auto first = latest.end() - std::min<qsizetype>(pictures, latest.size());
    const auto [darkest, brightest] = std::minmax_element(first, latest.end());
    settled = *brightest - *darkest < std::max(steadyLevel, *brightest * steadyShare);
    return settled;
}
