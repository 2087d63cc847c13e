#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// Date and time as they stand on a picture, in the language and, where the form is left to it, in
// the order of a locale.

enum class DateForm {
    System,      // the locale's short date with four digits of the year
    Digits,      // dd.mm.yyyy
    Long,        // the locale's long date
    NamedMonth,  // ddd, d. mmmm yyyy
    ShortMonth,  // ddd, d. mmm yyyy
};
enum class TimeForm {
    System,            // the locale's own with seconds
    Minutes,           // hh:mm of 24 hours
    HalfOfDay,         // as System with "AM " or "PM " in front, whatever the hours look like
    HalfOfDayMinutes,  // as Minutes with the same
};
constexpr int DateForms = 5;
constexpr int TimeForms = 4;

[[nodiscard]] QString FormatDate(DateForm form, const QDate& date, const QLocale& locale);
[[nodiscard]] QString FormatTime(TimeForm form, const QTime& time, const QLocale& locale);

// The locale's short date with four digits of the year, and the form that it has.
[[nodiscard]] QString ShortDateForm(const QLocale& locale);
[[nodiscard]] QString ShortDate(const QDate& date, const QLocale& locale);
