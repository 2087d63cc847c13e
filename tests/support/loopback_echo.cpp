#include "support/loopback_echo.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QHostAddress>

LoopbackEcho::LoopbackEcho() {
    if (!listener.listen(QHostAddress::LocalHost)) qFatal("An echo needs an address.");
    near.connectToHost(QHostAddress::LocalHost, listener.serverPort());
    if (!near.waitForConnected() || !listener.waitForNewConnection(5'000))
        qFatal("An echo needs a connection.");
    far.reset(listener.nextPendingConnection());
    listener.close();
    qApp->installEventFilter(this);
}

bool LoopbackEcho::HandleEventsBefore() {
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    const qint64 before = events;
    const qint64 own = ++sent;
    near.write("?");
    near.flush();
    // What handles an event may wait in its turn, and take this echo with its own.
    while (returned < own) {
        dispatcher->processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        returned += far->readAll().size();
    }
    return events != before;
}

bool LoopbackEcho::eventFilter(QObject* receiver, QEvent* event) {
    if (!Own(receiver)) ++events;
    return QObject::eventFilter(receiver, event);
}

bool LoopbackEcho::Own(const QObject* receiver) const {
    while (receiver && receiver != &near && receiver != far.get()) receiver = receiver->parent();
    return receiver;
}
