#include "core/run_state.h"

#include "base/clock.h"
#include "base/status_display.h"

namespace {

bool IsStep(RunState state) {
    return state >= RunState::Connecting && state <= RunState::OutsideHours;
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
        case RunState::OutsideHours:
            return "outside the hours";
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

void RunStatus::Enter(RunState next, const Trouble& why) {
    const bool beneath =
        IsStep(next) && (state == RunState::Paused || state == RunState::Stopping ||
                         state == RunState::PublishingOffline);
    const Trouble& known = beneath ? stepReason : reason;
    const bool told = next == (beneath ? step : state) && why.Why == known.Why;
    if (told && why == known) return;
    // A pause and a stop leave what is under way alone.
    if (next != RunState::Paused && next != RunState::Stopping) {
        step = next;
        stepReason = why;
    }
    if (!told) log.LogState(NameOf(next) + (why.Why.isEmpty() ? QString() : ": " + why.Why));
    if (!beneath) {
        FollowTrouble(next, why);
        state = next;
        reason = why;
        since = next == RunState::WaitingToRetry ? *troubleSince : clock.Milliseconds();
    }
    emit Changed();
}

void RunStatus::FollowTrouble(RunState next, const Trouble& why) {
    const bool trouble = next == RunState::WaitingToRetry;
    if (trouble && !troubleSince) troubleSince = clock.Milliseconds();
    // The steps of the next try are no end of the trouble.
    const bool rests = next == RunState::Waiting || next == RunState::OutsideHours;
    const bool ends = !trouble && (rests || !IsStep(next));
    if (ends) troubleSince.reset();
    if (ends) ongoing.reset();
    if (trouble || (ends && !why.Why.isEmpty())) ongoing = why;
}

void RunStatus::Resume() {
    if (state != RunState::Paused) return;
    state = RunState::Stopped;  // so that the step is entered in its own right
    Enter(step, Trouble(stepReason));
}

bool RunStatus::Running() const {
    return IsStep(state) || state == RunState::Paused;
}

bool RunStatus::EndedOffline() const {
    return state == RunState::Offline || (state == RunState::Stopped && !reason.Why.isEmpty());
}

bool RunStatus::Busy() const {
    return state == RunState::PublishingOffline ||
           (IsStep(step) && step != RunState::Waiting && step != RunState::WaitingToRetry &&
            step != RunState::OutsideHours);
}

RunButtons RunButtons::For(const RunStatus& run) {
    const bool running = run.Running();
    return {!running, running, running};
}
