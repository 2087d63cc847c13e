#pragma once

#include <QImage>
#include <QRegion>
#include <QString>

// The drawing surface is a QImage of Format_BGR888: the order of the bytes is that of a bitmap
// file, so a picture goes in and out without a conversion.

// Loads a bitmap file of any depth. Returns false and leaves the surface alone, or with
// no more than a part, when the file is missing or damaged.
[[nodiscard]] bool LoadSurface(QImage& surface, const QString& file);

// Saves the surface as a 24-bit bitmap in place of a file of that name, only when whole. Returns
// false when it is empty or not written; an older file then stays.
[[nodiscard]] bool SaveSurface(const QImage& surface, const QString& file);

// The same where the file that WholeFile::SetAside has taken away was saved from this surface, in
// which only `changed` is another since.
[[nodiscard]] bool SaveSurface(const QImage& surface, const QString& file, const QRegion& changed);
