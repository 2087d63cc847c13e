#include "core/schedule/schedule.h"

#include <algorithm>
#include <vector>

namespace {

constexpr qint64 secondsOfDay = 86'400;
constexpr qint64 secondsOfMinute = 60;
constexpr qint64 twilight = 30 * secondsOfMinute;
constexpr qint64 longestNight = 400;  // days that are looked at: polar ones last half a year

// The same clock at another moment.
QDateTime Moved(const QDateTime& clock, qint64 seconds) {
    QDateTime moved = clock;
    moved.setSecsSinceEpoch(seconds);
    return moved;
}

qint64 OffsetAt(const QDateTime& clock, qint64 seconds) {
    return Moved(clock, seconds).offsetFromUtc();
}

// The first second after `from` at which the clock stands otherwise than then, which it does at
// `to`.
qint64 JumpBetween(const QDateTime& clock, qint64 from, qint64 to) {
    const qint64 before = OffsetAt(clock, from);
    while (to - from > 1) {
        const qint64 middle = from + (to - from) / 2;
        (OffsetAt(clock, middle) == before ? from : to) = middle;
    }
    return to;
}

// The minutes of a day at which the hours begin or end.
std::vector<int> EdgesOf(const WeekHours& week, int day) {
    std::vector<int> edges;
    int before = day == 1 ? WeekHours::Days : day - 1;
    bool last = week.Holds(before, WeekHours::MinutesOfDay - 1);
    for (int minute = 0; minute < WeekHours::MinutesOfDay; ++minute)
        if (week.Holds(day, minute) != std::exchange(last, week.Holds(day, minute)))
            edges.push_back(minute);
    return edges;
}

}  // namespace

Schedule::Schedule(const QString& hoursText, const QString& placeText)
    : hours(Hours::Parse(hoursText, fault)) {
    if (hours.Is != Hours::Kind::Sun) return;
    if (const auto there = GeoPlace::Parse(placeText)) {
        place = *there;
        return;
    }
    fault = HoursFault{HoursFault::Kind::NoPlace, 0, placeText};
    hours = {};
}

bool Schedule::Open(const QDateTime& now) const {
    return OpenAt(now, now.toSecsSinceEpoch());
}

bool Schedule::OpenAt(const QDateTime& now, qint64 seconds) const {
    if (hours.Is == Hours::Kind::Always) return true;
    if (hours.Is == Hours::Kind::Sun) return LightAt(seconds);
    const QDateTime shown = Moved(now, seconds);
    const int minute = shown.time().hour() * 60 + shown.time().minute();
    return hours.Week.Holds(shown.date().dayOfWeek(), minute);
}

qint64 Schedule::DayOf(qint64 seconds) const {
    constexpr double secondsOfDegree = 240;
    const auto there = seconds + static_cast<qint64>(place.Longitude * secondsOfDegree);
    return there >= 0 ? there / secondsOfDay : (there + 1) / secondsOfDay - 1;
}

std::optional<std::pair<qint64, qint64>> Schedule::LightOf(qint64 day) const {
    const SunDay sun = SunOf(place, day);
    if (sun.Is == SunDay::Kind::Down) return std::nullopt;
    const bool up = sun.Is == SunDay::Kind::Up;
    const qint64 from = up ? sun.Noon - secondsOfDay / 2 : sun.Rise;
    const qint64 to = up ? sun.Noon + secondsOfDay / 2 : sun.Set;
    return std::pair(from - twilight, to + twilight);
}

// The light of one day may reach into the next one.
bool Schedule::LightAt(qint64 seconds) const {
    const qint64 today = DayOf(seconds);
    const auto lit = [&](qint64 day) {
        const auto light = LightOf(day);
        return light && seconds >= light->first && seconds < light->second;
    };
    return lit(today) || lit(today - 1) || lit(today + 1);
}

std::optional<qint64> Schedule::NextLight(const QDateTime& now) const {
    const qint64 begin = now.toSecsSinceEpoch();
    const bool open = LightAt(begin);
    const qint64 today = DayOf(begin);
    for (qint64 day = today - 1; day <= today + longestNight; ++day) {
        const auto light = LightOf(day);
        if (!light) continue;
        const qint64 edge = open ? light->second : light->first;
        if (edge > begin && LightAt(edge) != open) return edge;
    }
    return std::nullopt;
}

// Looks at the moments only at which something may change: where hours begin or end on each of the
// next days, and where the clock jumps.
std::optional<qint64> Schedule::NextHour(const QDateTime& now) const {
    const qint64 begin = now.toSecsSinceEpoch();
    const qint64 epoch = QDate(1970, 1, 1).toJulianDay();
    std::vector<qint64> moments;
    for (int ahead = -1; ahead <= WeekHours::Days + 1; ++ahead) {
        const QDate date = now.date().addDays(ahead);
        const qint64 shown = (date.toJulianDay() - epoch) * secondsOfDay;
        const qint64 from = shown - now.offsetFromUtc();
        const qint64 first = OffsetAt(now, from);
        const qint64 last = OffsetAt(now, from + secondsOfDay);
        if (first != last) moments.push_back(JumpBetween(now, from, from + secondsOfDay));
        for (const int minute : EdgesOf(hours.Week, date.dayOfWeek()))
            for (const qint64 offset : {first, last})
                moments.push_back(shown + minute * secondsOfMinute - offset);
    }
    std::ranges::sort(moments);
    const bool open = Open(now);
    const auto next = std::ranges::find_if(
        moments, [&](qint64 each) { return each > begin && OpenAt(now, each) != open; });
    return next == moments.end() ? std::nullopt : std::optional(*next);
}

std::optional<QDateTime> Schedule::NextChange(const QDateTime& now) const {
    if (hours.Is == Hours::Kind::Always) return std::nullopt;
    const auto next = hours.Is == Hours::Kind::Sun ? NextLight(now) : NextHour(now);
    return next ? std::optional(Moved(now, *next)) : std::nullopt;
}
