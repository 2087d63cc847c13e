#pragma once

#include <QDateTime>
#include <QHash>
#include <QLocale>
#include <QStringView>

#include <optional>

// When a picture of the archive was taken, as the clock on the wall showed it: milliseconds since
// 1970 if that clock had always gone by one time, so that names need no time zone to be compared.
using WallTime = qint64;

[[nodiscard]] WallTime WallTimeOf(const QDate& date, const QTime& time);
[[nodiscard]] WallTime WallTimeOf(const QDateTime& local);
[[nodiscard]] QDateTime LocalTimeOf(WallTime time);

// Reads the names that the archive gives to its pictures.
class ArchiveTimes {
  public:
    // locale: whose short dates stand in names that do not sort.
    explicit ArchiveTimes(const QLocale& locale);

    // The time in "2026-11-22-063015.jpg" or in "22.11.2026-063015.jpg", whose date is the locale's
    // short one with four digits of the year; a further one of the second may be marked "_02".
    // None: the name tells no time.
    [[nodiscard]] std::optional<WallTime> Of(const QString& name);

  private:
    [[nodiscard]] QDate Day(const QString& text);

    QLocale locale;
    QString form;
    QHash<QString, QDate> days;  // those read before: many pictures have the same
};
