#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// The archive of former pictures: one file for each, named by its time.

// Short date of the locale with four digits for the year, "-", hhmmss in 24-hour form, ".jpg". The
// date is not cleaned of characters that file names cannot have.
[[nodiscard]] QString ArchiveName(const QDateTime& time, const QLocale& locale);

// Copies the picture into the archive folder (ending in a separator); a second picture of the same
// second replaces the first. A copy that cannot be made is left out without a word, so is one
// whose short date has slashes, and any without an archive folder.
void ArchivePicture(const QString& picture, const QString& folder, const QDateTime& time,
                    const QLocale& locale);
