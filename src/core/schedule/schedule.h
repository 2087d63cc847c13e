#pragma once

#include "core/schedule/hours.h"
#include "core/schedule/sun.h"

#include <QDateTime>

#include <optional>
#include <utility>

// When pictures are published. A moment brings the time zone that its clock goes by: hours are
// those that the clock shows. Of times that it leaves out in the night when summer time begins, the
// part that is shown counts; those that it shows twice count both times.
class Schedule {
  public:
    // Always.
    Schedule() = default;
    // Hours that cannot be read count as always, and the fault tells why.
    Schedule(const QString& hours, const QString& place);

    [[nodiscard]] const std::optional<HoursFault>& Fault() const { return fault; }
    [[nodiscard]] const Hours& Wanted() const { return hours; }

    [[nodiscard]] bool Open(const QDateTime& now) const;
    // When that is no longer so, in the same time zone; nothing where it stays for a year.
    [[nodiscard]] std::optional<QDateTime> NextChange(const QDateTime& now) const;
    // While the sun is up, and half an hour before and after, on one of its days: from and to in
    // seconds since 1970. Nothing where it stays down.
    [[nodiscard]] std::optional<std::pair<qint64, qint64>> LightOf(qint64 day) const;

  private:
    [[nodiscard]] bool OpenAt(const QDateTime& now, qint64 seconds) const;
    [[nodiscard]] bool LightAt(qint64 seconds) const;
    [[nodiscard]] qint64 DayOf(qint64 seconds) const;
    [[nodiscard]] std::optional<qint64> NextLight(const QDateTime& now) const;
    [[nodiscard]] std::optional<qint64> NextHour(const QDateTime& now) const;

    std::optional<HoursFault> fault;  // told by the reading of the hours
    Hours hours;
    GeoPlace place;
};
