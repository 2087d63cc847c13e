#include "ui/tray/run_figures.h"

#include "base/status_hub.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/upload_cycle.h"
#include "net/ftp.h"
#include "ui/texts/texts.h"

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
    connect(&program.Run, &RunStatus::Changed, this, &RunFigures::Changed);
}

RunFigures::~RunFigures() {
    program.Display.Remove(*this);
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
        case RunState::Waiting:
        case RunState::GoingOnline:
        case RunState::TakingPicture:
        case RunState::Sending:
        case RunState::WaitingToRetry:
            break;
    }
    return text("Running");
}

int RunFigures::Made() const {
    return program.Cycle.PictureCount();
}

QString RunFigures::LastError() const {
    const QString camera = program.ezVidCap1.Fault();
    return camera.isEmpty() ? program.FTP1.GetLastErrorString() : camera;
}

std::optional<qint64> RunFigures::UntilNextPicture() const {
    const RunState state = State();
    if (!program.Run.Running() || state == RunState::Paused || state == RunState::Connecting)
        return std::nullopt;
    if (program.Run.Busy()) return 0;
    const qint64 next = lastPicture + program.State.Values.TotalInterval();
    return std::max<qint64>(0, next - program.Wait.OwnClock().Milliseconds());
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
