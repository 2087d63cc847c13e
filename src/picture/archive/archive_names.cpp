#include "picture/archive/archive_names.h"

#include "picture/overlay/date_time_form.h"

#include <algorithm>

namespace {

const QString ending = QStringLiteral(".jpg");
constexpr qsizetype dayLength = 10;   // 2026-11-22
constexpr qsizetype timeLength = 7;   // -063015
constexpr qsizetype countLength = 3;  // _02

// What one system or another does not let into a file name.
bool IsForbidden(QChar letter) {
    constexpr QStringView forbidden = u"/\\:*?\"<>|";
    return letter < u' ' || forbidden.contains(letter);
}

bool AreDigits(QStringView text) {
    return std::ranges::all_of(text, [](QChar each) { return each >= u'0' && each <= u'9'; });
}

bool IsMarked(QStringView text, QChar mark) {
    return text.startsWith(mark) && AreDigits(text.sliced(1));
}

}  // namespace

QString SystemArchiveName(const QDateTime& time, const QLocale& locale) {
    return ShortDate(time.date(), locale) + u'-' + time.time().toString(QStringLiteral("HHmmss")) +
           ending;
}

bool SystemNamesExist(const QLocale& locale) {
    return std::ranges::none_of(ShortDate(QDate(2026, 11, 22), locale), IsForbidden);
}

QString IsoArchiveName(const QDateTime& time, int number) {
    const QString name = DayFolder(time.date()) + time.time().toString(QStringLiteral("-HHmmss"));
    // The underscore sorts behind the full stop.
    const QString count =
        number > 1 ? u'_' + QString::number(number).rightJustified(2, u'0') : QString();
    return name + count + ending;
}

QString DayFolder(const QDate& day) {
    return day.toString(QStringLiteral("yyyy-MM-dd"));
}

QDate DayOfFolder(QStringView name) {
    if (name.size() != dayLength || name[4] != u'-' || name[7] != u'-') return {};
    const auto number = [&](qsizetype at, qsizetype digits) {
        const QStringView part = name.sliced(at, digits);
        return AreDigits(part) ? part.toInt() : 0;
    };
    return {number(0, 4), number(5, 2), number(8, 2)};
}

bool IsArchiveName(QStringView path) {
    QStringView name = path;
    if (name.size() > dayLength && name[dayLength] == u'/' &&
        DayOfFolder(name.first(dayLength)).isValid())
        name = name.sliced(dayLength + 1);
    if (!name.endsWith(ending) || std::ranges::any_of(name, IsForbidden)) return false;
    name.chop(ending.size());
    if (name.size() > countLength && IsMarked(name.last(countLength), u'_')) name.chop(countLength);
    return name.size() > timeLength && IsMarked(name.last(timeLength), u'-');
}
