#pragma once

#include "platform/online_state.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class QSocketNotifier;

// A network interface as far as it matters for being online.
struct NetworkInterface {
    QString Name;
    bool Up = false;  // switched on and with a carrier
    bool Loopback = false;
    bool HasAddress = false;  // one that reaches further than the link
    bool HasLinkLocal = false;

    bool operator==(const NetworkInterface&) const = default;
};

// The interfaces of this machine now; empty when the system does not tell.
[[nodiscard]] QList<NetworkInterface> ReadInterfaces();

// Whether the interface leads out of this machine: up, with an address, not the loopback.
[[nodiscard]] bool LeadsOut(const NetworkInterface& interface);

// Whether neighbours can be reached through it, for which an address that it gave itself will do.
[[nodiscard]] bool HasNeighbours(const NetworkInterface& interface);

// The kinds of those interfaces that lead out: Modem for dial-up and mobile ones, Lan for the rest.
[[nodiscard]] OnlineState::Links LinksOf(const QList<NetworkInterface>& interfaces);

// Keeps the list of interfaces by the kernel's notifications; asking costs no system call.
class InterfaceWatch : public QObject {
    Q_OBJECT

  public:
    using Reader = std::function<QList<NetworkInterface>()>;

    // reader: where the list comes from; it is asked now and after each notification.
    explicit InterfaceWatch(Reader reader = ReadInterfaces);
    ~InterfaceWatch() override;

    [[nodiscard]] const QList<NetworkInterface>& Interfaces() const { return interfaces; }

  signals:
    void Changed();

  private:
    void Notified();

    Reader read;
    int socket = -1;
    QList<NetworkInterface> interfaces;
};
