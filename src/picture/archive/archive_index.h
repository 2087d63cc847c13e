#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

#include <functional>

// What the archive writes down of its own pictures, because a name alone does not tell whose a file
// is: a text for each day, one line for each picture.

struct ArchiveEntry {
    qint64 Bytes = 0;
    QString Path;  // below the archive's folder, with a slash behind the folder of a day

    [[nodiscard]] bool operator==(const ArchiveEntry&) const = default;
};

// "12345 2026-11-22-063015.jpg" and a line end.
[[nodiscard]] QByteArray IndexLine(const ArchiveEntry& entry);

// Calls `each` for every line of any text that is one of those; half lines, as they are left by a
// power cut, do not count. Of lines one below the other with the same path only the last counts.
void ForEachIndexLine(const QByteArray& text,
                      const std::function<void(qint64 bytes, QByteArrayView path)>& each);

[[nodiscard]] QList<ArchiveEntry> IndexEntries(const QByteArray& text);
