#pragma once

#include <QString>

#include <optional>

// Puts a file away that is written anew again and again, so that its room serves the next one. Not
// for long: what is half a minute old the system begins to write to the disk, and what is removed
// by then never gets there.
class SpareFile {
  public:
    // path: of the file that nobody needs any more. now: milliseconds.
    void PutAway(const QString& path, qint64 now);

  private:
    QString last;
    std::optional<qint64> used;   // when a file was put away last
    std::optional<qint64> since;  // when this one was for the first time
};
