#pragma once

#include <QFlags>
#include <QObject>

// Whether the machine is online, kept by the system's notifications: asking costs nothing.
class OnlineState : public QObject {
    Q_OBJECT

  public:
    enum Link { Modem = 1, Lan = 2, Proxy = 4 };
    Q_DECLARE_FLAGS(Links, Link)

    // The system says that there is a way out to the internet.
    [[nodiscard]] virtual bool Connected() const = 0;
    // There is a network at all, be it only one without a way out: a server in it can be reached.
    [[nodiscard]] virtual bool Reachable() const = 0;
    // The kinds of connection that the system reports; they may be known while Connected() is
    // still false.
    [[nodiscard]] virtual Links Connection() const = 0;
    // Tells the system to count as connected, so that a page request is tried at all.
    virtual void ForceOnline() = 0;

  signals:
    void Changed();
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OnlineState::Links)
