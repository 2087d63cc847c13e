#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"

#include <QObject>

class ServerTrial;
class StatusDisplay;
class Waiting;

enum class TrialStep { Connecting, Storing, Renaming, Deleting };

// What the operator may change at once, because it has turned out to be better or necessary.
enum class TrialOffer {
    None,
    Accept,         // the certificate or host key whose fingerprint is the answer's reply
    SwitchPassive,  // passive mode on or off: the other one works
    Encrypt,        // the server offers encryption that is not used
};

struct TrialOutcome {
    ServerAnswer Answer;
    QString LeftBehind = {};  // the name of a test file that could not be deleted; empty: none
    TrialOffer Offer = TrialOffer::None;
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
    [[nodiscard]] TrialOutcome TryOnce(const ServerAccess& access);
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
