#pragma once

#include <QDate>

// The day that the age of the archive's pictures is judged by. It follows the clock, but a clock
// that has jumped ahead, by a year perhaps, takes it along by one day for each hour of work only:
// long before everything looks old, somebody has put the clock right.
class ArchiveDay {
  public:
    ArchiveDay() = default;
    // known: the day as it was left the last time; not valid: nothing is known yet.
    explicit ArchiveDay(const QDate& known) : day(known) {}

    // today: by the clock; now: milliseconds that never go back.
    void Follow(const QDate& today, qint64 now);

    // Never later than the clock's.
    [[nodiscard]] QDate Judges(const QDate& today) const { return std::min(day, today); }
    // To be remembered for the next time.
    [[nodiscard]] QDate Known() const { return day; }

  private:
    QDate day;
    qint64 moved = -1;  // when it was taken ahead last; below 0: not yet
};
