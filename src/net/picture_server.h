#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"

#include <QObject>

#include <functional>
#include <optional>

class StatusDisplay;
class Waiting;

// A place on which pictures become public, whatever is spoken there: one implementation for each
// protocol. Every operation waits through the event loop until it is done, or cannot be done, and
// ends within seconds of its limit whatever the server does; one at a time. None throws, asks the
// operator or shows a message: the answer says how it went.
class PictureServer : public QObject {
    Q_OBJECT

  public:
    struct Surroundings {
        Waiting& Wait;
        StatusDisplay& Display;  // countdown of the steps
        // Asked at each pass of a wait: whether it can still come to an end; none: it can.
        std::function<bool()> Online = {};
    };
    explicit PictureServer(const Surroundings& surroundings);

    // Takes effect with the next Open. A connection that stands goes on until then.
    virtual void SetAccess(const ServerAccess& wanted) { access = wanted; }
    [[nodiscard]] const ServerAccess& Access() const { return access; }

    // Connects, logs in and goes to the folder; what stood before is closed.
    [[nodiscard]] ServerAnswer Open();
    // Whether the next step needs no Open; false as soon as the server has ended the connection.
    [[nodiscard]] virtual bool IsOpen() const = 0;
    // Says good-bye and closes, at once and from any handler.
    virtual void Close() = 0;

    // What is under way ends with Cancelled, within a second. Works from any handler.
    void Cancel();

    // Sends a local file under that name of the folder; what bears it is replaced, and is never
    // left half-written where SendsWhole.
    [[nodiscard]] ServerAnswer SendFile(const QString& localPath, const QString& name);
    // Gives a file another name, and replaces what bears that.
    [[nodiscard]] ServerAnswer RenameFile(const QString& from, const QString& to);
    // Keeps a picture under a second name, which it replaces; it may lose the first one over it.
    [[nodiscard]] ServerAnswer KeepFile(const QString& from, const QString& to);
    [[nodiscard]] ServerAnswer DeleteFile(const QString& name);
    // Fine where a file bears that name: `beginning` is how it begins, 4 KB at least where it is
    // that long, or empty where the server does not let it be read. FileMissing: none does. All
    // else: the server does not tell.
    [[nodiscard]] ServerAnswer LookAt(const QString& name, QByteArray& beginning);
    // Sets who may read a file, octal ("644"). None: the server has lost the line over it, or says
    // try later; false: it does not do that.
    [[nodiscard]] virtual std::optional<bool> ChangeMode(const QString& name, const QString& mode);

    // Whether a file that gets another name always takes the place of the one that bears it, so
    // that nothing need be deleted first; asked of one that is open.
    [[nodiscard]] virtual bool Replaces() const { return false; }
    // Whether the server could encrypt what it is told plainly now; asked of one that is open.
    [[nodiscard]] virtual bool OffersEncryption() { return false; }
    // A file that is being sent becomes public as a whole, so that no other name is needed before.
    [[nodiscard]] virtual bool SendsWhole() const { return false; }

  signals:
    // bytes
    void SendProgress(qint64 sent, qint64 total);
    // What was said, without line ends, never a password.
    void Sent(const QString& command);
    void Received(const QString& reply);
    // Something that the operator should know once.
    void Remarked(ServerRemark remark, const QString& detail = {});

  protected:
    // The operations, entered with nothing cancelled.
    [[nodiscard]] virtual ServerAnswer DoOpen() = 0;
    [[nodiscard]] virtual ServerAnswer DoSend(const QString& localPath, const QString& name) = 0;
    [[nodiscard]] virtual ServerAnswer DoRename(const QString& from, const QString& to) = 0;
    [[nodiscard]] virtual ServerAnswer DoKeep(const QString& from, const QString& to);
    [[nodiscard]] virtual ServerAnswer DoDelete(const QString& name) = 0;
    [[nodiscard]] virtual ServerAnswer DoLook(const QString& name, QByteArray& beginning) = 0;
    // Lets go of what is under way; the wait for it ends by itself.
    virtual void DoCancel() {}

    // Waits until done, at most so many seconds; of the last thirty each is shown. None: it is
    // done; else what ended the wait.
    [[nodiscard]] std::optional<ServerFault> Await(const std::function<bool()>& done, int seconds,
                                                   const std::function<bool()>& hopeless = {});
    [[nodiscard]] bool Cancelled() const { return cancelled; }
    static constexpr int LookedAtBytes = 4096;
    [[nodiscard]] Waiting& Wait() const { return around.Wait; }
    [[nodiscard]] StatusDisplay& Display() const { return around.Display; }
    [[nodiscard]] bool Online() const { return !around.Online || around.Online(); }

  private:
    [[nodiscard]] ServerAnswer Run(const std::function<ServerAnswer()>& operation);

    Surroundings around;
    ServerAccess access;
    bool cancelled = false;
};
