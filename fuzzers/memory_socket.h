#pragma once

#include <QTcpSocket>

#include <functional>
#include <utility>

// A connection that goes nowhere: it stands as soon as it is asked for, what is sent goes to a
// routine, and what the other end says is put in.
class MemorySocket : public QTcpSocket {
  public:
    using Sent = std::function<void(const QByteArray& bytes)>;

    MemorySocket(QObject* parent, Sent ownSent) : QTcpSocket(parent), sent(std::move(ownSent)) {}

    // The other end says this, or closes, at once.
    void Hear(const QByteArray& bytes) {
        arrived += bytes;
        emit readyRead();
    }
    void Hang() {
        setSocketError(RemoteHostClosedError);
        setSocketState(UnconnectedState);
        emit errorOccurred(RemoteHostClosedError);
    }

    void connectToHost(const QString& /*host*/, quint16 port, OpenMode mode,
                       NetworkLayerProtocol /*protocol*/) override {
        setOpenMode(mode);
        setSocketState(ConnectedState);
        setPeerAddress(QHostAddress::LocalHost);
        setLocalAddress(QHostAddress::LocalHost);
        setPeerPort(port);
        QMetaObject::invokeMethod(this, &QTcpSocket::connected, Qt::QueuedConnection);
    }
    // What QAbstractSocket does here it does to a connection of the system.
    void close() override {
        QIODevice::close();  // NOLINT(bugprone-parent-virtual-call)
        setSocketState(UnconnectedState);
    }
    void setSocketOption(SocketOption /*option*/, const QVariant& /*value*/) override {}
    [[nodiscard]] qint64 bytesAvailable() const override {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call)
        return arrived.size() + QIODevice::bytesAvailable();
    }
    [[nodiscard]] qint64 bytesToWrite() const override { return 0; }

  protected:
    qint64 readData(char* to, qint64 most) override {
        const qint64 count = std::min<qint64>(most, arrived.size());
        std::copy_n(arrived.constData(), count, to);
        arrived.remove(0, count);
        return count;
    }
    qint64 writeData(const char* bytes, qint64 count) override {
        sent({bytes, count});
        QMetaObject::invokeMethod(
            this, [this, count] { emit bytesWritten(count); }, Qt::QueuedConnection);
        return count;
    }

  private:
    Sent sent;
    QByteArray arrived;
};
