#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <optional>

// Date and time as they stand on a picture, in the language and, where the form is left to it, in
// the order of a locale.

// The date in the form that the setting Date chooses: "" or "0" the locale's short date with four
// digits of the year, "1" dd.mm.yyyy, "2" the locale's long date, "3" ddd, d. mmmm yyyy, "4"
// ddd, d. mmm yyyy. Nothing for any other index.
[[nodiscard]] std::optional<QString> FormatDate(const QString& index, const QDate& date,
                                                const QLocale& locale);

// The time in the form that the setting Time chooses: "" or "0" the locale's own with seconds, "1"
// hh:mm of 24 hours, "2" and "3" the same two with "AM " or "PM " in front, whatever the hours look
// like. Nothing for any other index.
[[nodiscard]] std::optional<QString> FormatTime(const QString& index, const QTime& time,
                                                const QLocale& locale);
