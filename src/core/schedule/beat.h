#pragma once

#include <QDateTime>

// Where a moment lies between two full multiples of an interval, counted from midnight as the clock
// shows it; the first one of a day is always midnight. Of intervals longer than a day the multiples
// are counted from one midnight long ago.
struct Beat {
    qint64 Since = 0;  // milliseconds since the last multiple
    qint64 Until = 0;  // milliseconds until the next one, more than 0

    // interval: milliseconds, at least 1.
    [[nodiscard]] static Beat At(const QDateTime& now, qint64 interval);
};
