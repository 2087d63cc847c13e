#include "picture/overlay/date_time_form.h"

namespace {

// The locales' time with seconds comes with the time zone, which says nothing on a picture, and in
// one case with a part of the day that only a 12-hour time needs.
QString WithoutZone(const QString& format) {
    QString kept;
    bool quoted = false;
    for (const QChar each : format) {
        if (each == u'\'') quoted = !quoted;
        if (quoted || (each != u't' && each != u'B')) kept += each;
    }
    kept = kept.remove(QStringLiteral("()")).remove(QStringLiteral("[]")).trimmed();
    if (kept.endsWith(u',')) kept.chop(1);
    return kept;
}

QString DefaultTime(const QTime& time, const QLocale& locale) {
    return locale.toString(time, WithoutZone(locale.timeFormat(QLocale::LongFormat)));
}

QString HoursAndMinutes(const QTime& time, const QLocale& locale) {
    return locale.toString(time, QStringLiteral("HH:mm"));
}

QString HalfOfDay(const QTime& time) {
    return time.hour() < 12 ? QStringLiteral("AM ") : QStringLiteral("PM ");
}

// Names of days stand alone before the comma, so they are written as in a calendar: some languages
// have a full stop behind the short ones elsewhere.
QString NamedDate(const QDate& date, const QLocale& locale, const QString& dayAndMonth) {
    return locale.standaloneDayName(date.dayOfWeek(), QLocale::ShortFormat) +
           locale.toString(date, dayAndMonth);
}

}  // namespace

// Short dates differ in the year: systems write four digits where the locale data has two.
QString ShortDateForm(const QLocale& locale) {
    QString format = locale.dateFormat(QLocale::ShortFormat);
    const qsizetype year = format.indexOf(u'y');
    if (year >= 0 && format.count(u'y') == 2) format.insert(year, QStringLiteral("yy"));
    return format;
}

QString ShortDate(const QDate& date, const QLocale& locale) {
    return locale.toString(date, ShortDateForm(locale));
}

QString FormatDate(DateForm form, const QDate& date, const QLocale& locale) {
    switch (form) {
        case DateForm::System:
            break;
        case DateForm::Digits:
            return locale.toString(date, QStringLiteral("dd.MM.yyyy"));
        case DateForm::Long:
            return locale.toString(date, locale.dateFormat(QLocale::LongFormat));
        case DateForm::NamedMonth:
            return NamedDate(date, locale, QStringLiteral(", d. MMMM yyyy"));
        case DateForm::ShortMonth:
            return NamedDate(date, locale, QStringLiteral(", d. MMM yyyy"));
    }
    return ShortDate(date, locale);
}

QString FormatTime(TimeForm form, const QTime& time, const QLocale& locale) {
    switch (form) {
        case TimeForm::System:
            break;
        case TimeForm::Minutes:
            return HoursAndMinutes(time, locale);
        case TimeForm::HalfOfDay:
            return HalfOfDay(time) + DefaultTime(time, locale);
        case TimeForm::HalfOfDayMinutes:
            return HalfOfDay(time) + HoursAndMinutes(time, locale);
    }
    return DefaultTime(time, locale);
}
