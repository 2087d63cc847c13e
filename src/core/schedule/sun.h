#pragma once

#include <QString>

#include <optional>

// A place on earth, degrees; north and east are positive.
struct GeoPlace {
    double Latitude = 0;
    double Longitude = 0;

    // "52.52, 13.405", or "33.87 S, 151.2 E". Nothing where it is none.
    [[nodiscard]] static std::optional<GeoPlace> Parse(const QString& text);
};

// The sun on one day at a place; times are seconds since 1970.
struct SunDay {
    enum class Kind { RisesAndSets, Up, Down };  // all day and night, in the last two
    Kind Is = Kind::RisesAndSets;
    qint64 Noon = 0;  // when it stands highest
    qint64 Rise = 0;  // only where it rises and sets
    qint64 Set = 0;
};

// By NOAA's equations, a minute of the almanac's away from it at most where the sun does not just
// graze the horizon. day: counted since 1970, as the sun has it there, noon in its middle.
[[nodiscard]] SunDay SunOf(const GeoPlace& place, qint64 day);
