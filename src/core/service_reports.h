#pragma once

#include "base/clock.h"

class RunStatus;
class ServiceManager;

// Tells the system's manager of services that the run has begun, in which state it is, and, as long
// as the event loop goes round, that the program lives: one that hangs is ended and started again.
class ServiceReports : public QObject {
    Q_OBJECT

  public:
    // All outlive the reports.
    ServiceReports(Clock& clock, const RunStatus& ownRun, const ServiceManager& ownManager);
    // The program is at its end.
    ~ServiceReports() override;

    // The program has loaded its settings: where nothing is to be published by itself, it is ready.
    void Loaded();

  private:
    void Report();
    void GetReady();

    const RunStatus& run;
    const ServiceManager& manager;
    Timer alive;
    QByteArray told;  // the last status
    bool ready = false;
};
