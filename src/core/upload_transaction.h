#pragma once

#include "core/main_state.h"
#include "core/reply_log.h"
#include "core/run_state.h"
#include "core/transaction_flags.h"

#include <QObject>

class Connectivity;
class FTP;
class MessageBoxes;
class StatusDisplay;
class Waiting;

// The conversation with the FTP server: log in, change into the folder, send the new picture under
// a temporary name, put it in place of the public one by a rename, keep former pictures. Every step
// is one operation of the FTP control followed by a wait for the server's reply; how it went stands
// in the flags.
class UploadTransaction : public QObject {
    Q_OBJECT

  public:
    UploadTransaction(Waiting& waiting, FTP& ftp, Connectivity& connectivity,
                      StatusDisplay& display, MessageBoxes& boxes, const MainState& state,
                      RunStatus& run);

    TransactionFlags Flags;

    // Logs in and changes into the folder; takes about six seconds, most of it pauses that let
    // servers free the former connection, and at most three minutes. Before the first success of a
    // run a failure is told in a message box and ends the cycle (Failed); later it is silent, the
    // connection counts as down and the cycle tries again.
    // then: what the run goes on to do once the connection stands. Returns whether it does.
    bool ConnectFtp(RunState then = RunState::Waiting);
    // The same where the server has dropped an idle connection: the history goes on counting, or
    // it would never move on where the interval is longer than the server's patience.
    bool ConnectOnceMore(RunState then);
    // Ends the connect that is under way, if any: within the second, and without another login.
    void GiveUpConnect();
    [[nodiscard]] bool GivenUp() const { return givenUp; }
    // Why the last connect failed, in the user's language; empty when it did not.
    [[nodiscard]] const QString& Failure() const { return failure; }
    // It failed because the server does not take user name and password.
    [[nodiscard]] bool LoginRefused() const { return loginRefused; }
    [[nodiscard]] bool ConnectInProgress() const { return run.Step() == RunState::Connecting; }

    void CloseConnection();

    // The single steps. Each does nothing while Flags.ConnectionDown is set.
    void SendFile(const QString& localPath);
    void DeleteFile(const QString& name);
    void DeletePublic();
    enum class Missing { IsFault, IsNoFault };
    void RenameFile(const QString& from, const QString& to, Missing missing = Missing::IsFault);
    void RenamePublic();

    // Everything that one tick does on the server with the finished picture: send, every eleventh
    // time shift the history, delete the old picture when asked, rename. Returns true when the
    // picture is public.
    bool Publish(const QString& localPath);

    // Ticks since the last shift of the history.
    int HistoryCounter = 0;

    [[nodiscard]] const ReplyLog& Log() const { return log; }

  signals:
    // A connect failed before any succeeded: the cycle is over until btnStart.
    void Failed();
    void LogChanged();

  private:
    void OnReply(const QString& chunk);
    void OnSendProgress(qint32 sent, qint32 total);

    bool ConnectOnline();
    bool PauseConnect();
    bool LogIn();
    void LoginFailed();
    // What to do about a refused login, with the server's words as %1.
    [[nodiscard]] QString Advice() const;
    bool ChangeDirectory();
    bool InFolder(const QString& directory, bool answered, const QString& response);
    void AskWhenOffline();
    bool FinishConnect(bool connected, RunState then);
    void Warn(const QString& german, const QString& english);

    [[nodiscard]] bool MayGoOn() const;
    bool BeginStep(const QString& status);
    void AwaitReply(const bool& waitFlag, int seconds);
    void ShiftHistory();
    void Replace(bool oldIsGone);
    [[nodiscard]] bool RefusedToReplace() const;
    void ChangeMode(const QString& name);

    Waiting& waiting;
    FTP& ftp;
    Connectivity& connectivity;
    StatusDisplay& display;
    MessageBoxes& boxes;
    const MainState& state;
    RunStatus& run;
    QString failure;
    bool loginRefused = false;
    bool givenUp = false;
    ReplyLog log;
};
