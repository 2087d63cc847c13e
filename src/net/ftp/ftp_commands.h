#pragma once

#include "base/waiting.h"
#include "net/ftp/ftp_control_connection.h"
#include "net/ftp/ftp_properties.h"
#include "net/ftp/ftp_time_out.h"
#include "net/server_answer.h"

#include <QStringList>

// The exchange of commands and replies, and the record of what went wrong in it.
class FtpCommands : public QObject {
    Q_OBJECT

  public:
    FtpCommands(Waiting& waiting, StatusDisplay& display, const FtpProperties& properties,
                QObject* parent = nullptr);

    static constexpr int AnyCode = 65535;

    // Sends the command, with a blank and the argument unless that is empty, and waits for the end
    // of the reply; one that has not ended in time counts as what its code says. True when the code
    // is `expected` (AnyCode: whatever it is). Else a last error is recorded; only a wait that ends
    // with the program records none. A wait that `hopeless` ends takes the connection with it,
    // because a late answer would pass for the reply to the next command.
    bool SendCommand(const QString& command, const QString& argument, int expected,
                     const std::function<bool()>& hopeless = {});

    // See FTP::Ask.
    [[nodiscard]] int Ask(const QString& line);

    // Whether the control connection stands; records a last error for `operation` when not.
    [[nodiscard]] bool CheckConnected(const QString& operation);
    // Whether all texts may be sent; records a last error for `operation` when not.
    [[nodiscard]] bool CheckTexts(const QString& operation, const QStringList& texts);

    void ClearLastError();
    // Stores code and text and raises Error.
    void SetLastError(int code, const QString& text);

    // Waits for the condition or the time-out. Ends hopeless when the control connection is gone
    // or `hopeless` says so.
    Waiting::End Wait(const std::function<bool()>& done,
                      const std::function<bool()>& hopeless = {});
    // Waits for the reply to the command just sent. Done: it has come, or had begun when the time
    // was up or the connection broke.
    Waiting::End AwaitReply(const std::function<bool()>& hopeless = {});
    // Gives the server a few seconds to say why a transfer has ended.
    void AwaitLastWord();
    // Waits, within the time-out, for the end of a reply that has begun: its last lines must not
    // be taken for the reply to the next command.
    void AwaitLastLine();
    [[nodiscard]] Clock& OwnClock() const { return waiting.OwnClock(); }
    // Lets pending events run once.
    void Yield() { waiting.Yield(); }

    FtpControlConnection Control;
    FtpTimeOut TimeOut;
    ServerAnswer Fault;  // see FTP

  signals:
    void CommandSentToServer(const QString& command);
    void Error();

  private:
    Waiting& waiting;
    const FtpProperties& properties;
};
