#include "core/service_reports.h"

#include "core/run_state.h"
#include "platform/service_manager.h"

#include <utility>

ServiceReports::ServiceReports(Clock& clock, const RunStatus& ownRun,
                               const ServiceManager& ownManager)
    : run(ownRun), manager(ownManager), alive(clock, 1) {
    connect(&run, &RunStatus::Changed, this, &ServiceReports::Report);
    connect(&alive, &Timer::Tick, this, [this] { manager.Tell("WATCHDOG=1"); });
    // Twice in the time, so that one that comes late does no harm.
    if (manager.WatchdogMilliseconds() == 0) return;
    alive.SetInterval(manager.WatchdogMilliseconds() / 2);
    alive.SetEnabled(true);
}

ServiceReports::~ServiceReports() {
    manager.Tell("STOPPING=1");
}

void ServiceReports::Loaded() {
    if (run.Is() == RunState::Stopped) GetReady();
}

void ServiceReports::GetReady() {
    if (!std::exchange(ready, true)) manager.Tell("READY=1");
}

// Not the steps of each picture, which would be many a second.
void ServiceReports::Report() {
    if (run.Running()) GetReady();
    QByteArray status = NameOf(run.Is()).toUtf8();
    if (run.Running() && run.Is() != RunState::Paused)
        status = run.Failing() ? "not publishing" : "publishing";
    if (run.Ongoing()) status += ": " + run.Ongoing()->Why.simplified().left(200).toUtf8();
    if (std::exchange(told, status) != status) manager.Tell("STATUS=" + status);
}
