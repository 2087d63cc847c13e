#include "film/archive_time.h"

#include "picture/archive/archive_names.h"
#include "picture/overlay/date_time_form.h"

#include <algorithm>

namespace {

const QString ending = QStringLiteral(".jpg");
constexpr qsizetype clockDigits = 6;  // hhmmss
constexpr qsizetype countLength = 3;  // _02
constexpr qsizetype mostDays = 10'000;

// The number that digits are; -1 where anything else is among them.
int Number(QStringView digits) {
    int number = 0;
    for (const QChar each : digits) {
        if (each < u'0' || each > u'9') return -1;
        number = number * 10 + (each.unicode() - u'0');
    }
    return digits.isEmpty() ? -1 : number;
}

}  // namespace

WallTime WallTimeOf(const QDate& date, const QTime& time) {
    return QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch();
}

WallTime WallTimeOf(const QDateTime& local) {
    return WallTimeOf(local.date(), local.time());
}

QDateTime LocalTimeOf(WallTime time) {
    const QDateTime wall = QDateTime::fromMSecsSinceEpoch(time, Qt::UTC);
    return {wall.date(), wall.time()};
}

ArchiveTimes::ArchiveTimes(const QLocale& ownLocale)
    : locale(ownLocale), form(ShortDateForm(ownLocale)) {}

QDate ArchiveTimes::Day(const QString& text) {
    if (const QDate sorted = DayOfFolder(text); sorted.isValid()) return sorted;
    if (const auto known = days.constFind(text); known != days.constEnd()) return *known;
    // Names that others have put there may be all different.
    if (days.size() >= mostDays) days.clear();
    return days[text] = locale.toDate(text, form);
}

std::optional<WallTime> ArchiveTimes::Of(const QString& name) {
    qsizetype behind = name.size() - ending.size();
    if (behind > countLength && name[behind - countLength] == u'_') behind -= countLength;
    const qsizetype dash = behind - clockDigits - 1;
    if (dash < 1 || name[dash] != u'-' || !name.endsWith(ending, Qt::CaseInsensitive)) return {};
    const QStringView clock = QStringView(name).sliced(dash + 1, clockDigits);
    const QTime time(Number(clock.first(2)), Number(clock.sliced(2, 2)), Number(clock.sliced(4)));
    if (!time.isValid()) return {};
    const QDate day = Day(name.first(dash));
    // A dash too many is a year before Christ.
    const bool possible = day.isValid() && day.year() > 0;
    return possible ? std::optional(WallTimeOf(day, time)) : std::nullopt;
}
