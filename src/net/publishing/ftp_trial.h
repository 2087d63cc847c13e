#pragma once

#include "net/ftp/ftp.h"
#include "net/publishing/connection_trial.h"

#include <QTemporaryFile>

// The conversation of a trial with a server.
class FtpTrial : public QObject {
    Q_OBJECT

  public:
    FtpTrial(Waiting& ownWaiting, StatusDisplay& ownLog, const TrialAccess& ownAccess);

    [[nodiscard]] TrialOutcome Run();

    // Ends it with this result: at once while nothing is stored, otherwise after the test file is
    // deleted, for which a server that still answers has a few seconds.
    void Stop(TrialResult result);

  signals:
    void StepStarted(TrialStep step);

  private:
    [[nodiscard]] TrialResult Try();
    [[nodiscard]] TrialResult LogIn();
    [[nodiscard]] TrialResult ChangeFolder();
    [[nodiscard]] TrialResult Store();
    [[nodiscard]] TrialResult Rename();
    [[nodiscard]] TrialResult Delete();
    [[nodiscard]] TrialResult LoginFault() const;
    [[nodiscard]] TrialResult StoreFault(int code) const;
    [[nodiscard]] TrialResult Lost() const;
    [[nodiscard]] QString LastReply() const;
    void CleanUp();
    void CommandSent(const QString& command);
    void ReplyCame(const QString& chunk);

    Waiting& waiting;
    StatusDisplay& log;
    TrialAccess access;
    TrialNames names = TrialNames::Make();
    StatusDisplay unseen;  // nobody watches the countdown of a trial
    FTP client;
    QTemporaryFile scratch;
    Timer deadline;
    Timer grace;  // for a server that is to delete the test file

    std::optional<TrialResult> stopped;
    QString stranger;      // who wanted the test file and is not the server
    QString command;       // the last one sent, its verb only
    QString reply;         // the text since that command
    QStringList onServer;  // test files that may be there
    QString stored;        // the test file that certainly is there
    QString leftBehind;
};
