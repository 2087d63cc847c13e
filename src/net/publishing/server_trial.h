#pragma once

#include "base/clock.h"
#include "net/picture_server.h"
#include "net/publishing/connection_trial.h"

#include <QTemporaryFile>

// What a trial does on a server.
class ServerTrial : public QObject {
    Q_OBJECT

  public:
    // The server, which knows how to get in, outlives the trial.
    ServerTrial(Waiting& ownWaiting, PictureServer& ownServer);

    [[nodiscard]] TrialOutcome Run();

    // Ends it with this result: at once while nothing is stored, otherwise after the test file is
    // deleted, for which a server that still answers has a few seconds.
    void Stop(ServerFault result);

  signals:
    void StepStarted(TrialStep step);

  private:
    [[nodiscard]] ServerAnswer Try();
    [[nodiscard]] ServerAnswer PutOneInPlace(bool over);
    [[nodiscard]] ServerAnswer Send(const QString& name);
    [[nodiscard]] ServerAnswer Rename(bool over);
    [[nodiscard]] bool DeletesFirst() const;
    [[nodiscard]] ServerAnswer Delete();
    [[nodiscard]] TrialOffer OfferAfter(const ServerAnswer& answer);
    void CleanUp();
    [[nodiscard]] bool Gone(const QString& name);

    Waiting& waiting;
    PictureServer& server;
    TrialNames names = TrialNames::Make();
    QTemporaryFile scratch;
    Timer deadline;
    Timer grace;  // for a server that is to delete the test file

    std::optional<ServerFault> stopped;
    QStringList onServer;  // test files that may be there
    QString stored;        // the test file that certainly is there
    QString leftBehind;
};
