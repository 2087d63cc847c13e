#include "net/winsock.h"

#include "base/open_files.h"
#include "net/tls_socket.h"
#include "platform/socket_options.h"

#include <QHostInfo>
#include <QNetworkProxy>
#include <QScopedValueRollback>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <utility>

namespace {

constexpr int patienceMilliseconds = 5000;
constexpr int mostAtOnce = 16;  // sends in a row, before other events have their turn

// An IPv4 address in the form of IPv6 stands for the former, and so do those of the connection.
QHostAddress Plain(const QHostAddress& address) {
    bool mapped = false;
    const quint32 ipv4 = address.toIPv4Address(&mapped);
    return mapped ? QHostAddress(ipv4) : address;
}

QString WithoutBrackets(const QString& host) {
    return host.startsWith(u'[') && host.endsWith(u']') ? host.mid(1, host.size() - 2) : host;
}

Winsock::ConnectEnd EndOf(QAbstractSocket::SocketError error) {
    using enum Winsock::ConnectEnd;
    return error == QAbstractSocket::ConnectionRefusedError ? Refused : Unreachable;
}

// Its connections are sockets of another kind.
class Listener : public QTcpServer {
  public:
    Listener(const std::function<QTcpSocket*()>& ownMake, QObject* parent)
        : QTcpServer(parent), make(ownMake) {}

  protected:
    void incomingConnection(qintptr descriptor) override {
        QTcpSocket* const socket = make();
        socket->setSocketDescriptor(descriptor);
        addPendingConnection(socket);
    }

  private:
    std::function<QTcpSocket*()> make;
};

}  // namespace

Winsock::Winsock(Clock& clock, QObject* parent)
    : QObject(parent), patience(clock, patienceMilliseconds) {
    connect(&patience, &Timer::Tick, this, [this] {
        Drop(std::exchange(socket, nullptr));
        TryNext();
    });
}

void Winsock::Connect(const QString& host, qint32 port) {
    if (tls && tls->PeerName.isEmpty()) tls->PeerName = WithoutBrackets(host);
    if (Begin(port)) Resolve(WithoutBrackets(host));
}

void Winsock::Connect(const QList<QHostAddress>& addresses, qint32 port) {
    if (Begin(port)) TryEach(addresses);
}

bool Winsock::Begin(qint32 port) {
    Close();
    connectEnd = ConnectEnd::None;
    tlsAnswer = {};
    const bool possible = port >= 1 && port <= 65535;
    if (possible) remotePort = static_cast<quint16>(port);
    state = possible ? StateResolving : StateError;
    return possible;
}

void Winsock::Resolve(const QString& name) {
    if (const QHostAddress address(name); !address.isNull()) return TryEach({address});
    if (!FilesLeft()) return TryEach({});
    lookup = QHostInfo::lookupHost(name, this, [this](const QHostInfo& found) {
        if (found.lookupId() != lookup) return;
        lookup = noLookup;
        TryEach(found.addresses());
    });
}

void Winsock::TryEach(const QList<QHostAddress>& addresses) {
    untried = addresses;
    if (!untried.isEmpty()) return TryNext();
    connectEnd = ConnectEnd::HostNotFound;
    state = StateError;
}

void Winsock::TryNext() {
    const QHostAddress address = Plain(untried.takeFirst());
    patience.SetEnabled(false);
    patience.SetEnabled(!untried.isEmpty());
    state = StateConnecting;
    Use(NewSocket());
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->connectToHost(address, remotePort);
}

QTcpSocket* Winsock::NewSocket() {
    if (makeSocket) return makeSocket(this);
    return tls ? new TlsSocket(*tls, this) : new QTcpSocket(this);
}

TlsSocket* Winsock::Tls() const {
    return qobject_cast<TlsSocket*>(socket);
}

void Winsock::Listen(const QHostAddress& address) {
    Close();
    tlsAnswer = {};
    listener = new Listener([this] { return NewSocket(); }, this);
    listener->setProxy(QNetworkProxy::NoProxy);
    connect(listener, &QTcpServer::newConnection, this, &Winsock::TakeRequest);
    state = listener->listen(address) ? StateListening : StateError;
}

void Winsock::TakeRequest() {
    request = listener->nextPendingConnection();
    request->setParent(this);
    emit ConnectionRequest();
    if (request) {
        request->abort();
        request->deleteLater();
    }
    request = nullptr;
}

void Winsock::Accept() {
    if (!request) return;
    Use(std::exchange(request, nullptr));
    state = StateConnected;
    SetUpSocket();
    static_cast<void>(HoldForTls());
}

void Winsock::Use(QTcpSocket* newSocket) {
    socket = newSocket;
    connect(socket, &QTcpSocket::connected, this, &Winsock::Established);
    connect(socket, &QTcpSocket::readyRead, this, &Winsock::DataArrival);
    if (const TlsSocket* const secure = Tls()) {
        connect(secure, &TlsSocket::Established, this, &Winsock::Encrypted);
        connect(secure, &TlsSocket::encryptedBytesWritten, this, &Winsock::Written);
    } else {
        connect(socket, &QTcpSocket::bytesWritten, this, &Winsock::Written);
    }
    connect(socket, &QTcpSocket::errorOccurred, this, &Winsock::Ended);
    connect(socket, &QTcpSocket::disconnected, this, &Winsock::Ended);
}

void Winsock::SetUpSocket() {
    // A block smaller than a segment must not wait until the one before it is acknowledged.
    socket->setSocketOption(QTcpSocket::LowDelayOption, 1);
    SocketOptions::DetectDeadPeer(socket->socketDescriptor());
}

void Winsock::Established() {
    patience.SetEnabled(false);
    untried.clear();
    state = StateConnected;
    connectEnd = ConnectEnd::Established;
    SetUpSocket();
    if (!HoldForTls()) emit Connected();
}

void Winsock::SetTls(const std::optional<TlsTerms>& terms, TlsStart start) {
    tls = terms;
    tlsStart = start;
}

// Whether the connection that stands counts only when it is encrypted.
bool Winsock::HoldForTls() {
    if (!Tls() || tlsStart == TlsStart::Later) return false;
    state = StateConnecting;
    if (tlsStart == TlsStart::AtOnce) Handshake();
    return true;
}

void Winsock::StartTls() {
    tlsStart = TlsStart::AtOnce;
    if (Tls() && Tls()->state() == QTcpSocket::ConnectedState && !Tls()->Begun()) Handshake();
}

void Winsock::Handshake() {
    state = StateConnecting;
    Tls()->Begin();
}

void Winsock::Encrypted() {
    state = StateConnected;
    emit Connected();
}

ServerAnswer Winsock::TlsAnswer() const {
    return state == StateConnecting && Tls() ? Tls()->Verdict() : tlsAnswer;
}

TlsTerms Winsock::ForOneMore() const {
    return Tls() ? Tls()->ForOneMore() : TlsTerms{};
}

void Winsock::Written() {
    if (handingOver || !sending || !AllTaken()) return;
    const QScopedValueRollback now(handingOver, true);
    int left = mostAtOnce;
    do {
        sending = false;
        emit SendComplete();
    } while (Taken(--left > 0));
}

bool Winsock::AllTaken() const {
    const TlsSocket* const secure = Tls();
    return socket->bytesToWrite() == 0 && (!secure || secure->encryptedBytesToWrite() == 0);
}

// Whether the system has taken what a handler of SendComplete has sent; with `atOnce` without a
// pass through the event loop, which costs more than a block.
bool Winsock::Taken(bool atOnce) {
    if (atOnce && state == StateConnected) socket->flush();
    return state == StateConnected && sending && AllTaken();
}

void Winsock::Ended() {
    if (state == StatePeerClosing || state == StateError) return;
    const bool stood = state == StateConnected;
    const bool orderly = stood && (socket->error() == QTcpSocket::RemoteHostClosedError ||
                                   socket->error() == QTcpSocket::UnknownSocketError);
    if (socket->bytesAvailable() > 0) emit DataArrival();
    if (!socket) return;
    const bool reached = stood || (Tls() && Tls()->Begun());
    if (!reached) connectEnd = EndOf(socket->error());
    if (Tls()) tlsAnswer = Tls()->Verdict();
    if (!reached && !untried.isEmpty()) {
        Drop(std::exchange(socket, nullptr));
        return TryNext();
    }
    state = orderly ? StatePeerClosing : StateError;
    if (stood) emit Closed();
}

// The objects may be emitting at this moment, so they are deleted later.
void Winsock::Drop(QTcpSocket* old) {
    if (!old) return;
    old->disconnect(this);
    auto* const secure = qobject_cast<TlsSocket*>(old);
    if (secure) secure->flush();
    const bool inOrder = secure && secure->isEncrypted() &&
                         secure->state() == QTcpSocket::ConnectedState &&
                         secure->bytesToWrite() == 0 && secure->encryptedBytesToWrite() == 0;
    if (inOrder) return secure->Leave(parent() ? parent() : this);
    old->abort();
    old->deleteLater();
}

void Winsock::Close() {
    patience.SetEnabled(false);
    untried.clear();
    lookup = noLookup;  // a late answer is left alone: to abort it would cost its memory in Qt 6.4
    if (listener) {
        listener->disconnect(this);
        listener->close();
        listener->deleteLater();
    }
    listener = nullptr;
    Drop(std::exchange(socket, nullptr));
    sending = false;
    state = StateClosed;
}

void Winsock::Send(const QByteArray& bytes) {
    if (state != StateConnected) return;
    sending = true;
    socket->write(bytes);
    // Without a byte the socket would never report that it has written it.
    if (bytes.isEmpty()) QMetaObject::invokeMethod(this, &Winsock::Written, Qt::QueuedConnection);
}

void Winsock::Flush() {
    if (socket) socket->flush();
}

QByteArray Winsock::GetData() {
    return socket ? socket->readAll() : QByteArray();
}

QHostAddress Winsock::LocalAddress() const {
    return socket ? socket->localAddress() : QHostAddress();
}

QHostAddress Winsock::PeerAddress() const {
    return socket ? socket->peerAddress() : QHostAddress();
}

QHostAddress Winsock::RequestAddress() const {
    return request ? request->peerAddress() : QHostAddress();
}

quint16 Winsock::LocalPort() const {
    return listener ? listener->serverPort() : 0;
}
