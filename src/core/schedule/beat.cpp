#include "core/schedule/beat.h"

#include <algorithm>

Beat Beat::At(const QDateTime& now, qint64 interval) {
    constexpr qint64 day = 86'400'000;
    const qint64 today = now.time().msecsSinceStartOfDay();
    if (interval > day) {
        const qint64 since = (now.date().toJulianDay() * day + today) % interval;
        return {since, interval - since};
    }
    const qint64 since = today % interval;
    return {since, std::min(interval - since, day - today)};
}
