#pragma once

#include "base/clock.h"
#include "net/server_answer.h"
#include "net/tls_terms.h"

#include <QByteArray>
#include <QHostAddress>
#include <QString>

#include <functional>
#include <optional>

class QTcpServer;
class QTcpSocket;
class TlsSocket;

// One element of a socket control: it connects, or listens and accepts a single connection. Faults
// show in State() and never in a return value. It may be closed, and its owner may schedule its
// deletion, from a handler of its signals.
class Winsock : public QObject {
    Q_OBJECT

  public:
    enum ElementState {
        StateClosed = 0,
        StateListening = 2,
        StateResolving = 4,
        StateConnecting = 6,  // or beginning to encrypt
        StateConnected = 7,
        StatePeerClosing = 8,  // the peer has closed; what it sent before has been delivered
        StateError = 9,
    };

    // How the last Connect ended; kept after Close.
    enum class ConnectEnd {
        None,  // it was still going on, or there was none
        HostNotFound,
        Refused,
        Unreachable,
        Established,
    };

    explicit Winsock(Clock& clock, QObject* parent = nullptr);

    // Makes a socket that is nobody's but the parent's.
    using SocketMaker = std::function<QTcpSocket*(QObject* parent)>;
    // What connects from now on are sockets of that kind, in the clear; none: those of the network.
    void SetSockets(const SocketMaker& maker) { makeSocket = maker; }

    // Starts connecting to a name or an address, which may stand in brackets; Connected follows, or
    // the state becomes StateError.
    void Connect(const QString& host, qint32 port);
    // Tries the addresses one after the other. One that has not answered after five seconds gives
    // way to the next.
    void Connect(const QList<QHostAddress>& addresses, qint32 port);

    // Listens on the address at a port that the system chooses.
    void Listen(const QHostAddress& address);

    // Takes the connection that ConnectionRequest has announced. Only from a handler of it; one
    // that is not taken is closed.
    void Accept();
    // Where that connection comes from.
    [[nodiscard]] QHostAddress RequestAddress() const;

    enum class TlsStart {
        Later,      // connected in the clear until StartTls
        AtOnce,     // encrypted before it counts as connected
        WhenAsked,  // the same, but it waits for StartTls
    };
    // How what Connect and Listen begin from now on is encrypted; without terms it never is.
    void SetTls(const std::optional<TlsTerms>& terms, TlsStart start);
    // Encrypts the connection as soon as it stands. Connected follows, or the state becomes
    // StateError.
    void StartTls();
    // Why a connection that was to be encrypted is not, or not yet; kept after Close.
    [[nodiscard]] ServerAnswer TlsAnswer() const;
    // The terms of further connections to the server of this one, which is encrypted.
    [[nodiscard]] TlsTerms ForOneMore() const;

    // Closes whatever is open. What SendComplete has reported still reaches the peer.
    void Close();

    // Sends bytes; ignored unless connected. SendComplete follows from the event loop once the
    // system has taken all of them, also when there are none; where a handler of SendComplete
    // sends, it may follow as soon as that handler has returned.
    void Send(const QByteArray& bytes);

    // Hands over at once what Send has taken, as far as the system takes it without waiting.
    void Flush();

    // Everything that has arrived.
    [[nodiscard]] QByteArray GetData();

    [[nodiscard]] ElementState State() const { return state; }
    [[nodiscard]] ConnectEnd ConnectResult() const { return connectEnd; }
    [[nodiscard]] QHostAddress LocalAddress() const;
    [[nodiscard]] QHostAddress PeerAddress() const;
    [[nodiscard]] quint16 LocalPort() const;

  signals:
    void Connected();
    void ConnectionRequest();
    void DataArrival();
    void SendComplete();
    // The peer has closed, or the connection broke.
    void Closed();

  private:
    bool Begin(qint32 port);
    void Resolve(const QString& name);
    void TryEach(const QList<QHostAddress>& addresses);
    void TryNext();
    void Drop(QTcpSocket* old);
    [[nodiscard]] QTcpSocket* NewSocket();
    [[nodiscard]] TlsSocket* Tls() const;
    void Use(QTcpSocket* newSocket);
    void TakeRequest();
    void Established();
    [[nodiscard]] bool HoldForTls();
    void Handshake();
    void Encrypted();
    void Written();
    [[nodiscard]] bool AllTaken() const;
    bool Taken(bool atOnce);
    void Ended();
    void SetUpSocket();

    static constexpr int noLookup = -1;

    ElementState state = StateClosed;
    ConnectEnd connectEnd = ConnectEnd::None;
    QTcpSocket* socket = nullptr;
    QTcpServer* listener = nullptr;
    QTcpSocket* request = nullptr;
    bool sending = false;
    bool handingOver = false;  // SendComplete is being raised
    int lookup = noLookup;
    QList<QHostAddress> untried;
    quint16 remotePort = 0;
    Timer patience;  // with an address that does not answer
    SocketMaker makeSocket;
    std::optional<TlsTerms> tls;
    TlsStart tlsStart = TlsStart::Later;
    ServerAnswer tlsAnswer;
};
