#pragma once

#include "platform/dialer.h"
#include "platform/online_state.h"

#include <QTest>

#include <memory>

// A dialler that knows the entry "Stick", and a modem below it that does what it is told when it is
// told.
class PlayedModem {
  public:
    virtual ~PlayedModem() = default;
    [[nodiscard]] virtual Dialer& Phone() = 0;
    // The entries that the modem has dialled, in their order, and hung up.
    [[nodiscard]] virtual QStringList Dialled() = 0;
    [[nodiscard]] virtual QStringList HungUp() = 0;
    // Lets the dial that came last stand, or fail.
    virtual void Answer(bool stands) = 0;
    // Cuts the line that was dialled last.
    virtual void Cut() = 0;
};

// A machine that is offline at first.
class PlayedNetwork {
  public:
    virtual ~PlayedNetwork() = default;
    [[nodiscard]] virtual OnlineState& State() = 0;
    virtual void Set(bool connected, OnlineState::Links links) = 0;
};

// What the services of each system promise, for the tests that play what is below them.
class ServiceContracts : public QObject {
    Q_OBJECT

  protected:
    [[nodiscard]] virtual std::unique_ptr<PlayedModem> Modem() = 0;
    [[nodiscard]] virtual std::unique_ptr<PlayedNetwork> Network() = 0;

  private slots:
    void dialsAnEntryOnce();
    void failedDialIsNotReported();
    void tellsOfChangesOnly();
};
