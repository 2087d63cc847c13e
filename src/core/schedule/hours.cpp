#include "core/schedule/hours.h"

#include <QStringList>

#include <array>

namespace {

constexpr int minutesOfHour = 60;

const std::array<QStringList, WeekHours::Days> dayNames{
    QStringList{"mo", "mon", "monday", "montag", "lu", "lun", "lundi"},
    QStringList{"tu", "tue", "tuesday", "dienstag", "ma", "mar", "mardi"},
    QStringList{"we", "wed", "wednesday", "mi", "mittwoch", "me", "mer", "mercredi"},
    QStringList{"th", "thu", "thursday", "do", "donnerstag", "je", "jeu", "jeudi"},
    QStringList{"fr", "fri", "friday", "freitag", "ve", "ven", "vendredi"},
    QStringList{"sa", "sat", "saturday", "samstag", "sonnabend", "sam", "samedi"},
    QStringList{"su", "sun", "sunday", "so", "sonntag", "dim", "dimanche"}};
const QString twoMeanings = QStringLiteral("di");  // Dienstag, dimanche

QString DayText(int day) {
    return dayNames.at(static_cast<std::size_t>(day - 1)).front();
}

QString TimeText(int minute) {
    return QStringLiteral("%1:%2")
        .arg(minute / minutesOfHour, 2, 10, QLatin1Char('0'))
        .arg(minute % minutesOfHour, 2, 10, QLatin1Char('0'));
}

using Days = std::array<bool, WeekHours::Days>;

// "mo-we,fr": two days in a row stand by name, more as from and to.
QString DaysText(const Days& days) {
    QStringList parts;
    for (int first = 1; first <= WeekHours::Days; ++first) {
        if (!days.at(static_cast<std::size_t>(first - 1))) continue;
        int last = first;
        while (last < WeekHours::Days && days.at(static_cast<std::size_t>(last))) ++last;
        parts << DayText(first);
        if (last > first + 1) parts.last() += "-" + DayText(last);
        if (last == first + 1) parts << DayText(last);
        first = last;
    }
    return parts.join(',');
}

class HoursReader {
  public:
    explicit HoursReader(const QString& ownText) : text(ownText) {}

    // Whether all of it could be read.
    [[nodiscard]] bool Read(WeekHours& week) {
        while (Entry(week)) {
            if (AtEnd()) return true;
            if (!Skip(u";")) return Fail(HoursFault::Kind::NoSemicolon);
            if (AtEnd()) return true;
        }
        return false;
    }

    HoursFault Fault;

  private:
    [[nodiscard]] bool Entry(WeekHours& week);
    [[nodiscard]] bool DayList(Days& days);
    [[nodiscard]] bool DayOf(int& day);
    [[nodiscard]] bool RangeOf(int& from, int& to);
    [[nodiscard]] bool TimeOf(int& minute);
    [[nodiscard]] int Number();

    [[nodiscard]] QChar Next() const { return at < text.size() ? text.at(at) : QChar(); }
    [[nodiscard]] bool AtEnd() {
        SkipBlanks();
        return at >= text.size();
    }
    void SkipBlanks() {
        while (Next().isSpace()) ++at;
    }
    // One of these characters, with the blanks in front of it.
    bool Skip(QStringView any) {
        SkipBlanks();
        const bool found = !Next().isNull() && any.contains(Next());
        if (found) ++at;
        return found;
    }
    bool Fail(HoursFault::Kind kind) {
        SkipBlanks();
        return FailAt(kind, at);
    }
    bool FailAt(HoursFault::Kind kind, qsizetype from) {
        qsizetype to = from;
        while (to < text.size() && !text.at(to).isSpace() && !QStringView(u",;").contains(text[to]))
            ++to;
        Fault = {kind, from, text.mid(from, to - from)};
        return false;
    }

    const QString text;
    qsizetype at = 0;
};

bool HoursReader::Entry(WeekHours& week) {
    Days days{};
    if (AtEnd() || Next() == u';') return Fail(HoursFault::Kind::NoTime);
    const bool named = Next().isLetter();
    if (!named) days.fill(true);
    if (named && !DayList(days)) return false;
    const bool whole = AtEnd() || Next() == u';';
    do {
        int from = 0;
        int to = WeekHours::MinutesOfDay;
        if (!whole && !RangeOf(from, to)) return false;
        for (int day = 1; day <= WeekHours::Days; ++day)
            if (days.at(static_cast<std::size_t>(day - 1))) week.Set(day, from, to);
    } while (Skip(u",") || (!AtEnd() && Next().isDigit()));
    return true;
}

bool HoursReader::DayList(Days& days) {
    do {
        int first = 0;
        if (!DayOf(first)) return false;
        int last = first;
        if (Skip(u"-–") && !DayOf(last)) return false;
        for (int day = first;; day = day % WeekHours::Days + 1) {
            days.at(static_cast<std::size_t>(day - 1)) = true;
            if (day == last) break;
        }
    } while (Skip(u",") || (!AtEnd() && Next().isLetter()));
    return true;
}

bool HoursReader::DayOf(int& day) {
    SkipBlanks();
    const qsizetype begin = at;
    while (Next().isLetter()) ++at;
    const QString word = text.mid(begin, at - begin).toLower();
    if (word == twoMeanings) return FailAt(HoursFault::Kind::TwoMeanings, begin);
    for (day = 1; day <= WeekHours::Days; ++day)
        if (dayNames.at(static_cast<std::size_t>(day - 1)).contains(word)) return true;
    return FailAt(HoursFault::Kind::UnknownDay, begin);
}

bool HoursReader::RangeOf(int& from, int& to) {
    SkipBlanks();
    const qsizetype begin = at;
    if (!TimeOf(from)) return false;
    if (!Skip(u"-–")) return FailAt(HoursFault::Kind::NoRange, begin);
    if (!TimeOf(to)) return false;
    const bool none = from == to || from == WeekHours::MinutesOfDay;
    return !none || FailAt(HoursFault::Kind::NoRange, begin);
}

bool HoursReader::TimeOf(int& minute) {
    SkipBlanks();
    const qsizetype begin = at;
    if (!Next().isDigit()) return Fail(HoursFault::Kind::NoTime);
    minute = Number() * minutesOfHour;
    if (Next() == u':') {
        const qsizetype colon = at++;
        const int minutes = Number();
        const bool right = at == colon + 3 && minutes < minutesOfHour;
        if (!right) return FailAt(HoursFault::Kind::WrongTime, begin);
        minute += minutes;
    }
    return minute <= WeekHours::MinutesOfDay || FailAt(HoursFault::Kind::WrongTime, begin);
}

// Of at most two digits; more are none.
int HoursReader::Number() {
    constexpr int ten = 10;
    constexpr int tooMuch = 100;
    int number = 0;
    for (; Next() >= u'0' && Next() <= u'9'; ++at)
        number = std::min(number * ten + Next().digitValue(), tooMuch);
    return number;
}

}  // namespace

void WeekHours::Set(int day, int from, int to, bool in) {
    const std::size_t begin = PlaceOf(day, from);
    const auto count = static_cast<std::size_t>(to > from ? to - from : to - from + MinutesOfDay);
    for (std::size_t i = 0; i < count; ++i) minutes[(begin + i) % minutes.size()] = in;
}

QString WeekHours::RangesOf(int day) const {
    QStringList ranges;
    for (int from = 0; from < MinutesOfDay; ++from) {
        if (!Holds(day, from)) continue;
        int to = from;
        while (to < MinutesOfDay && Holds(day, to)) ++to;
        ranges << TimeText(from) + "-" + TimeText(to);
        from = to;
    }
    return ranges.join(',');
}

QString WeekHours::ToText() const {
    QStringList all;
    for (int day = 1; day <= Days; ++day) all << RangesOf(day);
    QStringList entries;
    for (int day = 1; day <= Days; ++day) {
        const QString& ranges = all.at(day - 1);
        if (ranges.isEmpty() || all.indexOf(ranges) < day - 1) continue;
        ::Days same{};
        for (int other = 0; other < Days; ++other)
            same.at(static_cast<std::size_t>(other)) = all.at(other) == ranges;
        entries << DaysText(same) + " " + ranges;
    }
    return entries.join("; ");
}

Hours Hours::Parse(const QString& text, std::optional<HoursFault>& fault) {
    fault.reset();
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return {};
    if (trimmed.compare(u"sun", Qt::CaseInsensitive) == 0) return {Kind::Sun, {}};
    HoursReader reader(text);
    Hours hours{Kind::Week, {}};
    if (reader.Read(hours.Week)) return hours;
    fault = reader.Fault;
    return {};
}
