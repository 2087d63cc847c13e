#pragma once

#include "core/main_state.h"
#include "core/reply_log.h"
#include "core/run_state.h"
#include "core/transaction_flags.h"
#include "net/server_answer.h"

#include <QObject>

#include <functional>

class Connectivity;
class MessageBoxes;
class PictureServer;
class StatusDisplay;
class Texts;
class Waiting;

// How a picture becomes public on a server, whatever is spoken there: connect, send the new picture
// under a temporary name, put it in place of the public one by a rename, keep former pictures. How
// a step went stands in the flags.
class UploadTransaction : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        Waiting& Wait;
        Connectivity& Net;
        StatusDisplay& Display;
        MessageBoxes& Boxes;
        const MainState& State;
        const Texts& Words;
        RunStatus& Run;
    };
    // The server outlives the transaction, or the time until it uses another.
    UploadTransaction(const Parts& ownParts, PictureServer& ownServer);

    // From the next step on another server. What is under way on the former one is given up.
    void Use(PictureServer& other);

    TransactionFlags Flags;

    // Connects and goes to the folder; with FTP that takes about six seconds, most of it pauses
    // that let servers free the former connection, and at most three minutes. Before the first
    // success of a run a failure is told in a message box and ends the cycle (Failed); later it is
    // silent, the connection counts as down and the cycle tries again.
    // then: what the run goes on to do once the connection stands. Returns whether it does.
    bool ConnectFtp(RunState then = RunState::Waiting);
    // The same where the server has dropped an idle connection: the history goes on counting, or
    // it would never move on where the interval is longer than the server's patience.
    bool ConnectOnceMore(RunState then);
    // Ends the connect that is under way, if any: within the second, and without another login.
    void GiveUpConnect();
    [[nodiscard]] bool GivenUp() const { return givenUp; }
    // Ends the step that is under way, which counts as failed then.
    void GiveUpStep();
    [[nodiscard]] bool IsConnected() const;
    // Why the last connect or step failed; empty when it did not.
    [[nodiscard]] const Trouble& Failure() const { return failure; }
    // It failed because the server takes no user name, password or key as they are.
    [[nodiscard]] bool LoginRefused() const { return failure.Kind == TroubleKind::Login; }
    [[nodiscard]] bool ConnectInProgress() const {
        return parts.Run.Step() == RunState::Connecting;
    }

    void CloseConnection();

    // The single steps. Each does nothing while Flags.ConnectionDown is set.
    void SendFile(const QString& localPath, const QString& name);
    ServerFault DeleteFile(const QString& name);
    void DeletePublic();
    enum class Missing { IsFault, IsNoFault };
    void RenameFile(const QString& from, const QString& to, Missing missing = Missing::IsFault);
    void RenamePublic();

    // Everything that one tick does on the server with the finished picture: send, every eleventh
    // time shift the history, delete the old picture when asked, rename. Returns true when the
    // picture is public.
    bool Publish(const QString& localPath);

    // The same with any file, under a name beside the picture's.
    bool PublishBeside(const QString& localPath, const QString& name);

    // What is public now is no picture of the camera: the next one takes its place without moving
    // it into the history, which goes on with the one after.
    void KeepOutOfHistory();

    // Ticks since the last shift of the history.
    int HistoryCounter = 0;

    [[nodiscard]] const ReplyLog& Log() const { return log; }

  signals:
    // A connect failed before any succeeded: the cycle is over until btnStart.
    void Failed();
    void LogChanged();

  private:
    void OnReply(const QString& chunk);
    void OnSendProgress(qint64 sent, qint64 total);

    [[nodiscard]] bool Open();
    [[nodiscard]] QString ConnectMessage(const ServerAnswer& answer) const;
    void Explain(const ServerAnswer& answer);
    void AskWhenOffline();
    bool FinishConnect(bool connected, RunState then);
    void Warn(const QString& text);

    [[nodiscard]] bool MayGoOn() const;
    [[nodiscard]] ServerAnswer Step(const QString& status,
                                    const std::function<ServerAnswer()>& operation);
    [[nodiscard]] bool HistoryIsDue();
    void ShiftHistory();
    void DeleteOldest(const QString& name);
    void KeepPublic();
    void Replace(bool oldIsGone);
    void ChangeMode(const QString& name);

    Parts parts;
    PictureServer* server = nullptr;
    Trouble failure;
    bool refusedToReplace = false;  // the last rename, because of the file that is there
    bool givenUp = false;
    ReplyLog log;
};
