#pragma once

#include "base/clock.h"

class RunStatus;

// Notices that publishing has failed for ten minutes, and that it works again: once for each
// failure, and not while the operator has stopped or paused it.
class OutageWatch : public QObject {
    Q_OBJECT

  public:
    // Both outlive the watch.
    OutageWatch(Clock& clock, const RunStatus& ownRun);

  signals:
    // What is wrong, the run state knows.
    void Began();
    void Ended();

  private:
    void Follow();

    const RunStatus& run;
    Timer patience;
    bool told = false;
};
