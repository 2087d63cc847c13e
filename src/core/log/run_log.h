#pragma once

#include "core/log/log_file.h"
#include "core/log/log_flow.h"
#include "core/run_state.h"

#include <functional>

struct MainState;

// Writes down what a run was like, so that somebody who comes after weeks can see why pictures were
// missing: beginnings, ends, troubles with their reasons, connections. With `LogFile` on into the
// log of the program folder, and into the system's journal where there is one to listen.
class RunLog : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        const Clock& Time;
        const RunStatus& Run;
        const MainState& State;
        QString Folder;                                    // the program folder
        std::function<void(const QString&)> Journal = {};  // gets each line without its time
    };
    // All outlive the log.
    explicit RunLog(const Parts& ownParts);

    void Write(const QString& text);

  private:
    void Follow();
    void FollowConnection();
    [[nodiscard]] QString StateText() const;
    [[nodiscard]] QString TargetText() const;

    Parts parts;
    LogFile file;
    LogFlow flow;
    QString told;  // the last state
    bool connecting = false;
    std::optional<qint64> failingSince;  // clock milliseconds
};
