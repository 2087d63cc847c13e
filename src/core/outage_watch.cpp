#include "core/outage_watch.h"

#include "core/run_state.h"

#include <utility>

namespace {

constexpr int patienceMilliseconds = 600'000;

}  // namespace

OutageWatch::OutageWatch(Clock& clock, const RunStatus& ownRun)
    : run(ownRun), patience(clock, patienceMilliseconds) {
    connect(&run, &RunStatus::Changed, this, &OutageWatch::Follow);
    connect(&patience, &Timer::Tick, this, [this] {
        told = true;
        patience.SetEnabled(false);
        emit Began();
    });
}

void OutageWatch::Follow() {
    patience.SetEnabled(run.Failing() && !told);
    if (run.Failing()) return;
    const bool works = run.Running() && run.Is() != RunState::Paused && !run.Closed();
    if (std::exchange(told, false) && works) emit Ended();
}
