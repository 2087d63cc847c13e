#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"

#include <QObject>

class ServerTrial;
class StatusDisplay;
class Waiting;

enum class TrialStep { Connecting, Storing, Renaming, Deleting };

struct TrialOutcome {
    ServerAnswer Answer;
    QString LeftBehind = {};  // the name of a test file that could not be deleted; empty: none
};

// Tries whether pictures can be published with some settings, before they are saved: goes the way
// of a picture with a small file of its own on a connection of its own, replaces that file as a
// picture is replaced, and deletes it. Public pictures and a running cycle are left alone.
class ConnectionTrial : public QObject {
    Q_OBJECT

  public:
    // log: where the commands and replies are shown.
    ConnectionTrial(Waiting& ownWaiting, StatusDisplay& ownLog);
    ~ConnectionTrial() override;

    // Waits through the event loop until it is known, for about a minute at most. One at a time.
    [[nodiscard]] TrialOutcome Run(const ServerAccess& access);

    // Ends the one that runs as soon as possible. Works from any handler.
    void Cancel();
    [[nodiscard]] bool Running() const { return running; }

  signals:
    void StepStarted(TrialStep step);

  private:
    [[nodiscard]] TrialOutcome TryServer(const ServerAccess& access);
    [[nodiscard]] TrialOutcome TryFolder(const QString& folder);

    Waiting& waiting;
    StatusDisplay& log;
    ServerTrial* current = nullptr;
    bool running = false;
};

// The name of a file that nobody has; the second one is what it is renamed to.
struct TrialNames {
    QString First;
    QString Second;

    [[nodiscard]] static TrialNames Make();
};
