#include "core/schedule/sun.h"

#include "fuzzer.h"

#include <cmath>

const Fuzzer geoPlace("geo_place", [](const QByteArray& bytes) {
    const auto place = GeoPlace::Parse(QString::fromUtf8(bytes));
    if (!place) return;
    MUST(std::abs(place->Latitude) <= 90 && std::abs(place->Longitude) <= 180);
    const auto number = [](double degrees) { return QString::number(degrees, 'f', 20); };
    const auto again = GeoPlace::Parse(number(place->Latitude) + ", " + number(place->Longitude));
    MUST(again && again->Latitude == place->Latitude && again->Longitude == place->Longitude);
    constexpr qint64 day = 20'500;
    const SunDay sun = SunOf(*place, day);
    MUST(sun.Is != SunDay::Kind::RisesAndSets || (sun.Rise < sun.Noon && sun.Noon < sun.Set));
});
