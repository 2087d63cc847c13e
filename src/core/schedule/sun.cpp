#include "core/schedule/sun.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double secondsOfDay = 86'400;
constexpr double secondsOfDegree = 240;  // the sun takes so long for a degree
constexpr double mostLatitude = 90;
constexpr double mostLongitude = 180;

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

double Degrees(double radians) {
    return radians * 180 / std::numbers::pi;
}

struct Sun {
    double Declination;     // radians
    double EquationOfTime;  // seconds that the sun is ahead of the mean one
};

// The names and numbers are those of the equations: centuries since 2000, the mean longitude and
// anomaly of the sun, what its orbit adds, the ecliptic.
Sun SunAt(double seconds) {
    const double julianDay = seconds / secondsOfDay + 2440587.5;
    const double t = (julianDay - 2451545) / 36525;
    const double longitude = Radians(280.46646 + t * (36000.76983 + t * 0.0003032));
    const double anomaly = Radians(357.52911 + t * (35999.05029 - t * 0.0001537));
    const double eccentricity = 0.016708634 - t * (0.000042037 + t * 0.0000001267);
    const double centre = std::sin(anomaly) * (1.914602 - t * (0.004817 + t * 0.000014)) +
                          std::sin(2 * anomaly) * (0.019993 - t * 0.000101) +
                          std::sin(3 * anomaly) * 0.000289;
    const double node = Radians(125.04 - 1934.136 * t);
    const double apparent = longitude + Radians(centre - 0.00569 - 0.00478 * std::sin(node));
    const double seconds21 = 21.448 - t * (46.815 + t * (0.00059 - t * 0.001813));
    const double obliquity = Radians(23 + (26 + seconds21 / 60) / 60 + 0.00256 * std::cos(node));
    const double y = std::pow(std::tan(obliquity / 2), 2);
    const double equation = y * std::sin(2 * longitude) - 2 * eccentricity * std::sin(anomaly) +
                            4 * eccentricity * y * std::sin(anomaly) * std::cos(2 * longitude) -
                            y * y * std::sin(4 * longitude) / 2 -
                            eccentricity * eccentricity * std::sin(2 * anomaly) * 5 / 4;
    return {std::asin(std::sin(obliquity) * std::sin(apparent)),
            Degrees(equation) * secondsOfDegree};
}

// How far before and after noon the sun is on the horizon, as the cosine of the angle: its upper
// edge, lifted by the air. Below -1 it stays above, above 1 below.
double HorizonCosine(double latitude, double declination) {
    constexpr double zenith = 90.833;
    return std::cos(Radians(zenith)) / (std::cos(latitude) * std::cos(declination)) -
           std::tan(latitude) * std::tan(declination);
}

}  // namespace

std::optional<GeoPlace> GeoPlace::Parse(const QString& text) {
    static const QRegularExpression form(QStringLiteral(
        R"(^\s*([+-]?\d{1,3}(?:\.\d{1,20})?)[\s°]*([NSns]?)[,;\s]\s*([+-]?\d{1,3}(?:\.\d{1,20})?)[\s°]*([EWew]?)\s*$)"));
    const auto match = form.match(text);
    if (!match.hasMatch()) return std::nullopt;
    const auto degrees = [&match](int number, QStringView negative) {
        const bool other = match.captured(number + 1).toUpper() == negative;
        return match.captured(number).toDouble() * (other ? -1 : 1);
    };
    const GeoPlace place{degrees(1, u"S"), degrees(3, u"W")};
    const bool there =
        std::abs(place.Latitude) <= mostLatitude && std::abs(place.Longitude) <= mostLongitude;
    return there ? std::optional(place) : std::nullopt;
}

SunDay SunOf(const GeoPlace& place, qint64 day) {
    constexpr double pole = 89.99;  // where the equations have no answer
    constexpr int rounds = 2;       // the sun moves on until it rises and sets
    const double latitude = Radians(std::clamp(place.Latitude, -pole, pole));
    const double meanNoon =
        (static_cast<double>(day) + 0.5) * secondsOfDay - place.Longitude * secondsOfDegree;
    const auto noonBy = [&](double seconds) { return meanNoon - SunAt(seconds).EquationOfTime; };
    const double noon = noonBy(meanNoon);
    const auto horizon = [&](double side) {
        double seconds = noon;
        for (int i = 0; i < rounds; ++i) {
            const double cosine = HorizonCosine(latitude, SunAt(seconds).Declination);
            const double angle = Degrees(std::acos(std::clamp(cosine, -1.0, 1.0)));
            seconds = noonBy(seconds) + side * angle * secondsOfDegree;
        }
        return static_cast<qint64>(std::lround(seconds));
    };
    const double cosine = HorizonCosine(latitude, SunAt(noon).Declination);
    const auto kind = cosine < -1  ? SunDay::Kind::Up
                      : cosine > 1 ? SunDay::Kind::Down
                                   : SunDay::Kind::RisesAndSets;
    const auto highest = static_cast<qint64>(std::lround(noon));
    if (kind != SunDay::Kind::RisesAndSets) return {kind, highest};
    return {kind, highest, horizon(-1), horizon(1)};
}
