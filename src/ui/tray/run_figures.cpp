#include "ui/tray/run_figures.h"

#include "base/status_hub.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/upload_cycle.h"
#include "texts/texts.h"

#include <algorithm>

RunFigures::RunFigures(Program& ownProgram)
    : StatusMemory(ownProgram.Wait.OwnClock()),
      program(ownProgram),
      lastPicture(ownProgram.Wait.OwnClock().Milliseconds()) {
    program.Display.Add(*this);
    connect(&program.Cycle, &UploadCycle::PicturePublished, this, [this](int count) {
        published = count;
        emit Changed();
    });
    connect(&program.Run, &RunStatus::Changed, this, &RunFigures::Note);
}

RunFigures::~RunFigures() {
    program.Display.Remove(*this);
}

void RunFigures::Note() {
    const RunStatus& run = program.Run;
    if (run.Is() == RunState::WaitingToRetry && !run.Reason().isEmpty())
        lastError = run.Reason() + " (" + TimeOf(run.Since()) + ")";
    emit Changed();
}

QString RunFigures::TimeOf(qint64 milliseconds) const {
    const Clock& source = program.Wait.OwnClock();
    const QDateTime now = source.Now();
    const QDateTime time = now.addMSecs(milliseconds - source.Milliseconds());
    const bool today = time.date() == now.date();
    return time.toString(today ? QString("HH:mm:ss") : QString("yyyy-MM-dd HH:mm:ss"));
}

RunState RunFigures::State() const {
    return program.Run.Is();
}

QString RunFigures::StateText(const Texts& texts, RunState state) {
    const auto text = [&texts](const QString& key) { return texts.Get("States", key); };
    switch (state) {
        case RunState::Stopped:
        case RunState::Stopping:
            return text("Stopped");
        case RunState::Connecting:
            return text("Connecting");
        case RunState::Paused:
            return text("Paused");
        case RunState::PublishingOffline:
        case RunState::Offline:
            return text("Offline");
        case RunState::WaitingToRetry:
            return text("Retrying");
        case RunState::OutsideHours:
            return text("OutsideHours");
        case RunState::Waiting:
        case RunState::GoingOnline:
        case RunState::TakingPicture:
        case RunState::Sending:
            break;
    }
    return text("Running");
}

int RunFigures::Made() const {
    return program.Cycle.PictureCount();
}

QString RunFigures::LastError() const {
    return program.ezVidCap1.Fault().isEmpty() ? lastError : program.ezVidCap1.Reason();
}

std::optional<qint64> RunFigures::UntilNextPicture() const {
    const RunState state = State();
    if (!program.Run.Running() || state == RunState::Paused || state == RunState::Connecting)
        return std::nullopt;
    if (state == RunState::OutsideHours) return UntilHoursBegin();
    if (program.Run.Busy()) return 0;
    const qint64 next = state == RunState::WaitingToRetry ? program.Run.ThisRun.Again.Next()
                        : program.State.Values.OnTheMinute
                            ? program.Run.ThisRun.Due
                            : lastPicture + program.State.Values.TotalInterval();
    return std::max<qint64>(0, next - program.Wait.OwnClock().Milliseconds());
}

std::optional<qint64> RunFigures::UntilHoursBegin() const {
    const QDateTime now = program.Wait.OwnClock().Now();
    const auto begin = program.Cycle.PublishingHours().NextChange(now);
    return begin ? std::optional(now.msecsTo(*begin)) : std::nullopt;
}

void RunFigures::ShowOnline(bool online) {
    const bool changed = online != Online;
    StatusMemory::ShowOnline(online);
    if (changed) emit Changed();
}

void RunFigures::ShowPictureCount(const QString& text) {
    StatusMemory::ShowPictureCount(text);
    lastPicture = program.Wait.OwnClock().Milliseconds();
}

void RunFigures::ResetRunningTime() {
    StatusMemory::ResetRunningTime();
    lastPicture = program.Wait.OwnClock().Milliseconds();
}
