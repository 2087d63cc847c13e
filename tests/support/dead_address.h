#pragma once

#include <QTcpServer>
#include <QTcpSocket>

// An address of this computer that answers nothing: a listener that takes nobody, its queue full.
class DeadAddress {
  public:
    QHostAddress Address{"127.0.0.4"};

    [[nodiscard]] bool Begin(quint16 port) {
        listener.setListenBacklogSize(0);
        const bool listening = listener.listen(Address, port);
        listener.pauseAccepting();
        queued.connectToHost(Address, port);
        return listening && queued.waitForConnected();
    }

  private:
    QTcpServer listener;
    QTcpSocket queued;
};
