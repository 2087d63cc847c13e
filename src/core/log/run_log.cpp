#include "core/log/run_log.h"

#include "base/clock.h"
#include "core/main_state.h"

#include <utility>

namespace {

constexpr qint64 minute = 60'000;

}  // namespace

RunLog::RunLog(const Parts& ownParts) : parts(ownParts), file(parts.Folder) {
    connect(&parts.Run, &RunStatus::Changed, this, [this] {
        FollowConnection();
        Follow();
    });
}

void RunLog::Write(const QString& text) {
    const Settings& values = parts.State.Values;
    const QDateTime now = parts.Time.Now();
    const QString time = now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODate);
    const QStringList lines = flow.Take(LogText(text, {values.PW}), parts.Time.Milliseconds());
    for (const QString& line : lines) {
        if (values.LogFile) file.Write(time + u' ' + line);
        if (parts.Journal) parts.Journal(line);
    }
}

QString RunLog::TargetText() const {
    const Settings& values = parts.State.Values;
    const QString place = values.LocalMode() ? values.Verzeichnis : values.Server;
    return "publishing to " + place + ", every " +
           QString::number(static_cast<double>(values.TotalInterval()) / 1000) + " s";
}

// The steps of a run are one state, unless pictures are missing.
QString RunLog::StateText() const {
    const RunStatus& run = parts.Run;
    const QString why = run.Ongoing() ? run.Ongoing()->Why : run.Reason();
    if (run.Is() == RunState::Stopping) return told;
    if (!run.Running() || run.Is() == RunState::Paused)
        return NameOf(run.Is()) + (why.isEmpty() ? QString() : ": " + why);
    return run.Failing() ? "not publishing: " + why : TargetText();
}

void RunLog::Follow() {
    const RunStatus& run = parts.Run;
    const qint64 now = parts.Time.Milliseconds();
    if (run.Failing() && !failingSince) failingSince = now;
    const QString state = StateText();
    if (std::exchange(told, state) == state) return;
    QString after;
    if (!run.Failing() && failingSince)
        after = " after " + QString::number((now - *failingSince) / minute) + " min without";
    if (!run.Failing()) failingSince.reset();
    Write(state + after);
}

void RunLog::FollowConnection() {
    const bool now = parts.Run.Step() == RunState::Connecting;
    const bool done = std::exchange(connecting, now) && !now;
    if (done && parts.Run.Running() && parts.Run.Step() != RunState::WaitingToRetry)
        Write("connected to " + parts.State.Values.Server);
}
