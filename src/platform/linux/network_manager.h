#pragma once

#include "platform/online_state.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QVariantMap>

// NetworkManager's view of the network. It is read once when the service appears and then kept by
// the service's own notifications, so that asking costs no call.
class NetworkManager : public QObject {
    Q_OBJECT

  public:
    // Blocks for at most half a second, so that the first answer is there when this returns.
    explicit NetworkManager(const QDBusConnection& bus);

    // Whether the service runs and has told its state; nothing else here means anything otherwise.
    [[nodiscard]] bool Running() const { return running; }

    // Whether there is a way out of this machine. A limited network or a portal counts: the server
    // may be reachable where NetworkManager's own probe is not.
    [[nodiscard]] bool Connected() const;
    // Some connection stands, be it without a way out of its network.
    [[nodiscard]] bool OnANetwork() const;

    // The kind of the connection that carries the default route: Modem, Lan, or none while not
    // connected.
    [[nodiscard]] OnlineState::Links Connection() const;

    // Asks the service to look again; the answer comes as a change. Nothing when it does not run.
    void CheckConnectivity();

  signals:
    void Changed();

  private slots:
    void PropertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated);
    void StateChanged(uint newState);
    void BusLost();

  private:
    void OwnerChanged(const QString& newOwner);
    void Fetch();
    void Take(const QDBusMessage& reply);
    void Apply(const QVariantMap& properties);

    QDBusConnection bus;
    QDBusServiceWatcher owner;
    bool running = false;
    uint state = 0;
    uint connectivity = 0;
    QString kind;
};
