#pragma once

#include <QString>

// The upload interval. A timer of the old kind cannot run for much longer than a minute, so the
// settings keep the interval in two keys: whole extra minutes, and the rest.
constexpr int UnsetInterval = 500;      // milliseconds, when nothing is written
constexpr int IntervalMinute = 60'000;  // milliseconds
constexpr int MostUptime = 32767;       // the minutes are counted in 16 bits

struct IntervalParts {
    int Framerate = UnsetInterval;  // milliseconds, 1 to 60000
    int Uptime = 0;                 // minutes, 0 to 32767

    bool operator==(const IntervalParts&) const = default;
};

// Splits an interval in milliseconds into its two keys; whole minutes leave a full minute in
// Framerate (120000 is one minute and 60000 ms). Less than 1 ms counts as 1 ms, more than 32768
// minutes as 32768.
[[nodiscard]] IntervalParts SplitInterval(qint64 totalMilliseconds);

// The interval in milliseconds that the parts make up.
[[nodiscard]] qint64 TotalInterval(const IntervalParts& parts);

// What a number that is no rest of a minute means as key Framerate, in milliseconds: whole minutes
// are lost, 0 is a minute, a negative value counts back from a minute (-5 and -60005 are 59995).
[[nodiscard]] int WithoutWholeMinutes(int written);
