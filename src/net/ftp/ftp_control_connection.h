#pragma once

#include "base/clock.h"
#include "net/ftp/ftp_properties.h"
#include "net/ftp/ftp_reply.h"
#include "net/winsock.h"

#include <QObject>

// The control connection (element 0) and the replies that arrive on it.
class FtpControlConnection : public QObject {
    Q_OBJECT

  public:
    explicit FtpControlConnection(Clock& clock, QObject* parent = nullptr);

    // Starts connecting, everything known of an earlier connection forgotten.
    void Open(const FtpProperties& wanted);
    // Starts encryption on a connection that was to have it later. Connected is set once more when
    // it stands.
    void StartTls();
    void Close();

    // Sends the line in UTF-8 with its line end, before a Close that follows; ignored when there is
    // no connection.
    void SendLine(const QString& line);

    // Whether the connection stands; false as soon as the server has closed it.
    [[nodiscard]] bool Stands() const { return element.State() == Winsock::StateConnected; }
    // Whether it neither stands nor can come to stand.
    [[nodiscard]] bool Gone() const;
    // The code of the last whole reply since ForgetReply; 0 when there was none.
    [[nodiscard]] int ReplyCode() const { return Lines.Codes.isEmpty() ? 0 : Lines.Codes.last(); }
    // That reply tells of a failure.
    [[nodiscard]] bool Refused() const { return IsRefusal(ReplyCode()); }
    // How the last Open ended; kept after Close.
    [[nodiscard]] Winsock::ConnectEnd ConnectResult() const { return element.ConnectResult(); }
    [[nodiscard]] QHostAddress LocalAddress() const { return element.LocalAddress(); }
    [[nodiscard]] QHostAddress PeerAddress() const { return element.PeerAddress(); }

    // See Winsock.
    [[nodiscard]] ServerAnswer TlsAnswer() const { return element.TlsAnswer(); }
    [[nodiscard]] TlsTerms ForOneMore() const { return element.ForOneMore(); }

    // Gets ready for the reply to the next command.
    void ForgetReply() { Lines.Forget(); }
    // See ReplyLines::CountOpen.
    void CountOpenReply();

    bool Connected = false;        // established, not closed since, login not refused
    bool WelcomeReceived = false;  // the server's 220
    bool LoggedIn = false;
    bool Encrypts = false;     // nothing but AUTH is said in the clear
    bool EpsvRefused = false;  // on this connection
    QString ReplyText;         // what arrived last, with what it is the rest of
    ReplyLines Lines;

  signals:
    void ServerResponse(const QString& chunk);
    // A reply has ended, wherever the network cut it: after the ServerResponse with its last line.
    void Replied(int code);

  private:
    void Receive();

    void Announce(qsizetype known);

    Winsock element;
    QByteArray received;  // of a character that was cut
    Timer lateEnd;        // how long another reply may show what the last line was
};
