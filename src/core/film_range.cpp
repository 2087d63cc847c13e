#include "core/film_range.h"

#include <algorithm>

namespace {

// An invalid time where it is none.
QDateTime Moment(const QString& text, int daysBehindADay) {
    const QString dayForm = QStringLiteral("yyyy-MM-dd");
    const QDate date =
        QDate::fromString(text.first(std::min(text.size(), dayForm.size())), dayForm);
    if (text.size() == dayForm.size()) return {date.addDays(daysBehindADay), QTime(0, 0)};
    if (text.size() < dayForm.size() || text[dayForm.size()] != u'T') return {};
    const QTime time = QTime::fromString(text.sliced(dayForm.size() + 1), QStringLiteral("HH:mm"));
    return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
}

}  // namespace

std::optional<FilmRange> FilmRange::Parse(const QString& from, const QString& to,
                                          const QString& file) {
    const FilmRange range{Moment(from, 0), Moment(to, 1), file};
    const bool fits = range.From.isValid() && range.To.isValid() && range.From < range.To;
    return fits && !file.isEmpty() ? std::optional(range) : std::nullopt;
}
