#pragma once

#include "base/clock.h"
#include "core/day_record.h"

#include <QString>

#include <optional>

class RunStatus;
class UploadCycle;

// Keeps the record of the last 24 hours, also from one start of the program to the next: in a file
// that is written every five minutes at most, and at the end, because memory cards wear out.
class RunRecord : public QObject {
    Q_OBJECT

  public:
    // All outlive the record. ownFile: a damaged one counts as none.
    RunRecord(Clock& ownClock, const RunStatus& ownRun, const UploadCycle& cycle,
              const QString& ownFile);

    // The record up to this minute.
    [[nodiscard]] const DayRecord& Day();
    // Writes what has not been written yet. Where that is impossible, nobody need know.
    void Save();

  private:
    void Load();
    void MoveToNow();
    void Look();
    void NoteSending();
    void AddPicture(qint64 bytes);
    [[nodiscard]] MinuteState StateNow() const;

    Clock& clock;
    const RunStatus& run;
    QString file;
    DayRecord day;
    Timer look;
    qint64 savedAt;  // clock milliseconds
    bool unsaved = false;
    std::optional<qint64> sendingSince;  // clock milliseconds
};
