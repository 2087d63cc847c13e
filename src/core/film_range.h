#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

// What --film asks for.
struct FilmRange {
    QDateTime From;
    QDateTime To;  // the first moment that is not in it
    QString File;  // WebM where it ends so, else MP4

    // from, to: "2026-11-22", the whole day, or "2026-11-22T06:30". None where one is no time, or
    // the second is not behind the first.
    [[nodiscard]] static std::optional<FilmRange> Parse(const QString& from, const QString& to,
                                                        const QString& file);
};
