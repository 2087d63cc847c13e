#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// How the pictures of the archive are named, by the time when they were taken.

// Short date of the locale with four digits for the year, "-", hhmmss in 24-hour form, ".jpg". The
// date is not cleaned of characters that file names cannot have.
[[nodiscard]] QString SystemArchiveName(const QDateTime& time, const QLocale& locale);

// Whether files with such names can exist, on any system.
[[nodiscard]] bool SystemNamesExist(const QLocale& locale);

// 2026-11-22-063015.jpg: sorted by name they are sorted by time. number: of the pictures of that
// second, from 1; the further ones are 2026-11-22-063015_02.jpg and so on.
[[nodiscard]] QString IsoArchiveName(const QDateTime& time, int number = 1);

inline constexpr int MostInASecond = 99;

// The folder of a day, 2026-11-22, and back; an invalid date for any other text.
[[nodiscard]] QString DayFolder(const QDate& day);
[[nodiscard]] QDate DayOfFolder(QStringView name);

// Whether the archive may have given this name, which may have the folder of a day in front
// (separated by a slash); never one that leads out of the archive.
[[nodiscard]] bool IsArchiveName(QStringView path);
