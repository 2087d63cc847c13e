#include "core/run_record.h"

#include "base/whole_file.h"
#include "core/run_state.h"
#include "core/upload_cycle.h"

#include <QFile>

namespace {

constexpr int lookMilliseconds = 20'000;  // so that no minute is left out
constexpr qint64 saveMilliseconds = 300'000;
constexpr qint64 mostBytes = 100'000;  // of a file that is worth a look

}  // namespace

RunRecord::RunRecord(Clock& ownClock, const RunStatus& ownRun, const UploadCycle& cycle,
                     const QString& ownFile)
    : clock(ownClock),
      run(ownRun),
      file(ownFile),
      look(ownClock, lookMilliseconds),
      savedAt(ownClock.Milliseconds()) {
    Load();
    connect(&look, &Timer::Tick, this, &RunRecord::Look);
    connect(&run, &RunStatus::Changed, this, &RunRecord::NoteSending);
    connect(&run, &RunStatus::Changed, this, &RunRecord::Look);
    connect(&cycle, &UploadCycle::PicturePublished, this,
            [this](int, qint64 bytes) { AddPicture(bytes); });
    look.SetEnabled(true);
}

void RunRecord::Load() {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly) || source.size() > mostBytes) return;
    if (const auto read = DayRecord::FromBytes(source.readAll())) day = *read;
}

void RunRecord::Save() {
    if (!unsaved) return;
    savedAt = clock.Milliseconds();
    const QByteArray bytes = day.ToBytes();
    const bool written = WholeFile::Replace(
        file, [&bytes](QFile& target) { return target.write(bytes) == bytes.size(); });
    unsaved = !written;
}

void RunRecord::MoveToNow() {
    constexpr qint64 minute = 60;
    day.MoveTo(clock.Now().toSecsSinceEpoch() / minute);
}

const DayRecord& RunRecord::Day() {
    MoveToNow();
    return day;
}

void RunRecord::Look() {
    MoveToNow();
    if (day.Note(StateNow())) unsaved = true;
    if (clock.Milliseconds() - savedAt >= saveMilliseconds) Save();
}

MinuteState RunRecord::StateNow() const {
    if (!run.Running() || run.Is() == RunState::Paused) return MinuteState::NotRunning;
    if (run.Is() == RunState::OutsideHours) return MinuteState::OutsideHours;
    if (!run.Ongoing()) return MinuteState::Waiting;
    return run.Ongoing()->Kind == TroubleKind::Camera ? MinuteState::CameraGone
                                                      : MinuteState::Failed;
}

void RunRecord::NoteSending() {
    if (run.Step() != RunState::Sending)
        sendingSince.reset();
    else if (!sendingSince)
        sendingSince = clock.Milliseconds();
}

// A picture that goes into a folder of this computer is not sent.
void RunRecord::AddPicture(qint64 bytes) {
    MoveToNow();
    day.AddPicture(bytes, sendingSince ? clock.Milliseconds() - *sendingSince : 0);
    unsaved = true;
}
