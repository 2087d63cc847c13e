#include "core/run_state.h"

#include "base/clock.h"
#include "base/status_display.h"

namespace {

bool IsStep(RunState state) {
    return state >= RunState::Connecting && state <= RunState::WaitingToRetry;
}

}  // namespace

QString NameOf(RunState state) {
    switch (state) {
        case RunState::Stopped:
            return "stopped";
        case RunState::Connecting:
            return "connecting";
        case RunState::Waiting:
            return "waiting for the next picture";
        case RunState::GoingOnline:
            return "going online";
        case RunState::TakingPicture:
            return "taking the picture";
        case RunState::Sending:
            return "sending";
        case RunState::WaitingToRetry:
            return "waiting to try again";
        case RunState::Paused:
            return "paused";
        case RunState::Stopping:
            return "stopping";
        case RunState::PublishingOffline:
            return "publishing the offline picture";
        case RunState::Offline:
            return "offline";
    }
    return {};
}

RunStatus::RunStatus(const Clock& ownClock, StatusDisplay& ownLog)
    : clock(ownClock), log(ownLog), since(ownClock.Milliseconds()) {}

void RunStatus::Enter(RunState next, const QString& why) {
    const bool beneath =
        IsStep(next) && (state == RunState::Paused || state == RunState::Stopping ||
                         state == RunState::PublishingOffline);
    if (next == (beneath ? step : state) && why == reason) return;
    // A pause and a stop leave what is under way alone.
    if (next != RunState::Paused && next != RunState::Stopping) step = next;
    log.LogState(NameOf(next) + (why.isEmpty() ? QString() : ": " + why));
    if (!beneath) {
        const qint64 now = clock.Milliseconds();
        const bool trouble = next == RunState::WaitingToRetry;
        if (trouble && !troubleSince) troubleSince = now;
        // The steps of the next try are no end of the trouble.
        if (!trouble && (next == RunState::Waiting || !IsStep(next))) troubleSince.reset();
        state = next;
        reason = why;
        since = trouble ? *troubleSince : now;
    }
    emit Changed();
}

void RunStatus::Resume() {
    if (state != RunState::Paused) return;
    state = RunState::Stopped;  // so that the step is entered in its own right
    Enter(step);
}

bool RunStatus::Running() const {
    return IsStep(state) || state == RunState::Paused;
}

bool RunStatus::EndedOffline() const {
    return state == RunState::Offline || (state == RunState::Stopped && !reason.isEmpty());
}

bool RunStatus::Busy() const {
    return state == RunState::PublishingOffline ||
           (IsStep(step) && step != RunState::Waiting && step != RunState::WaitingToRetry);
}

RunButtons RunButtons::For(const RunStatus& run) {
    const bool running = run.Running();
    return {!running, running, running};
}
