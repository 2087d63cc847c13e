#include "picture/archive/archive_day.h"

namespace {

constexpr qint64 hour = 3'600'000;
// A clock that was ahead and is put right takes the day back; one that has lost its battery and
// says 1970 does not.
constexpr int mostBack = 31;
const QDate earliest(2026, 1, 1);

}  // namespace

void ArchiveDay::Follow(const QDate& today, qint64 now) {
    const bool putRight = today < day && today.daysTo(day) <= mostBack;
    if (!day.isValid() || day < earliest || putRight) day = today;
    if (today <= day || (moved >= 0 && now - moved < hour)) return;
    day = day.addDays(1);
    moved = now;
}
