#include "core/settings/interval.h"

#include <algorithm>

IntervalParts SplitInterval(qint64 totalMilliseconds) {
    constexpr qint64 longest = (MostUptime + 1LL) * IntervalMinute;
    const qint64 total = std::clamp<qint64>(totalMilliseconds, 1, longest);
    const qint64 minutes = (total - 1) / IntervalMinute;
    return {static_cast<int>(total - minutes * IntervalMinute), static_cast<int>(minutes)};
}

qint64 TotalInterval(const IntervalParts& parts) {
    return static_cast<qint64>(parts.Uptime) * IntervalMinute + parts.Framerate;
}

int WithoutWholeMinutes(int written) {
    const int rest = written % IntervalMinute;
    return rest > 0 ? rest : rest + IntervalMinute;
}
