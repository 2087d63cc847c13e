#include "net/winsock.h"

#include "platform/socket_options.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

#include <utility>

namespace {

Winsock::ConnectEnd EndOf(QAbstractSocket::SocketError error) {
    using enum Winsock::ConnectEnd;
    if (error == QAbstractSocket::HostNotFoundError) return HostNotFound;
    return error == QAbstractSocket::ConnectionRefusedError ? Refused : Unreachable;
}

}  // namespace

Winsock::Winsock(QObject* parent) : QObject(parent) {}

void Winsock::Connect(const QString& host, qint32 port) {
    Close();
    connectEnd = ConnectEnd::None;
    if (port < 1 || port > 65535) {
        state = StateError;
        return;
    }
    Use(new QTcpSocket(this));
    state = StateResolving;
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->connectToHost(host, static_cast<quint16>(port), QTcpSocket::ReadWrite,
                          QTcpSocket::IPv4Protocol);
}

void Winsock::Listen(const QHostAddress& address) {
    Close();
    listener = new QTcpServer(this);
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
}

void Winsock::Use(QTcpSocket* newSocket) {
    socket = newSocket;
    connect(socket, &QTcpSocket::hostFound, this, [this] { state = StateConnecting; });
    connect(socket, &QTcpSocket::connected, this, &Winsock::Established);
    connect(socket, &QTcpSocket::readyRead, this, &Winsock::DataArrival);
    connect(socket, &QTcpSocket::bytesWritten, this, &Winsock::Written);
    connect(socket, &QTcpSocket::errorOccurred, this, &Winsock::Ended);
    connect(socket, &QTcpSocket::disconnected, this, &Winsock::Ended);
}

void Winsock::SetUpSocket() {
    // A block smaller than a segment must not wait until the one before it is acknowledged.
    socket->setSocketOption(QTcpSocket::LowDelayOption, 1);
    SocketOptions::DetectDeadPeer(socket->socketDescriptor());
}

void Winsock::Established() {
    state = StateConnected;
    connectEnd = ConnectEnd::Established;
    SetUpSocket();
    emit Connected();
}

void Winsock::Written() {
    if (!sending || socket->bytesToWrite() > 0) return;
    sending = false;
    emit SendComplete();
}

void Winsock::Ended() {
    if (state == StatePeerClosing || state == StateError) return;
    const bool stood = state == StateConnected;
    const bool orderly = stood && (socket->error() == QTcpSocket::RemoteHostClosedError ||
                                   socket->error() == QTcpSocket::UnknownSocketError);
    if (socket->bytesAvailable() > 0) emit DataArrival();
    if (!socket) return;
    if (!stood) connectEnd = EndOf(socket->error());
    state = orderly ? StatePeerClosing : StateError;
    if (stood) emit Closed();
}

void Winsock::Close() {
    // The objects may be emitting at this moment, so they are deleted later.
    if (listener) {
        listener->disconnect(this);
        listener->close();
        listener->deleteLater();
    }
    if (socket) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
    listener = nullptr;
    socket = nullptr;
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
