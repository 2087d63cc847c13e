#pragma once

#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

// Tells when everything that went over sockets of this process has been handled, where a system
// tells of that by messages of another process, as Wine does: they come in the order in which it
// happened, so what is sent to oneself comes back behind all of it.
class LoopbackEcho : public QObject {
    Q_OBJECT

  public:
    LoopbackEcho();

    // Handles events until the echo is back; whether there were any but its own.
    [[nodiscard]] bool HandleEventsBefore();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    [[nodiscard]] bool Own(const QObject* receiver) const;

    QTcpServer listener;
    QTcpSocket near;
    std::unique_ptr<QTcpSocket> far;
    qint64 sent = 0;
    qint64 returned = 0;
    qint64 events = 0;  // of others
};
