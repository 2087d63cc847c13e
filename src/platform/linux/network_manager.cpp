#include "platform/linux/network_manager.h"

#include "platform/linux/nm_bus.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusPendingCall>

namespace {

constexpr int startLimit = 500;  // milliseconds

// Values of NetworkManager's interface.
constexpr uint connectedLocal = 50;   // State: from here on there is a network
constexpr uint connectedSite = 60;    // State: from here on there is a default route
constexpr uint connectivityNone = 1;  // Connectivity: not connected to any network

QDBusMessage GetState() {
    return NmBus::Method(NmBus::Path, NmBus::Properties, "GetAll", {NmBus::Service});
}

}  // namespace

NetworkManager::NetworkManager(const QDBusConnection& ownBus)
    : bus(ownBus), owner(NmBus::Service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus.isConnected()) return;
    connect(&owner, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& now) { OwnerChanged(now); });
    bus.connect(NmBus::Service, NmBus::Path, NmBus::Properties, "PropertiesChanged", this,
                SLOT(PropertiesChanged(QString, QVariantMap, QStringList)));
    bus.connect(NmBus::Service, NmBus::Path, NmBus::Service, "StateChanged", this,
                SLOT(StateChanged(uint)));
    bus.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local", "Disconnected",
                this, SLOT(BusLost()));

    const QDBusMessage reply = bus.call(GetState(), QDBus::Block, startLimit);
    Take(reply);
    // A service that is slow to answer at start still gets its say later.
    if (QDBusError(reply).type() == QDBusError::NoReply) Fetch();
}

bool NetworkManager::Connected() const {
    return running && state >= connectedSite && connectivity != connectivityNone;
}

bool NetworkManager::OnANetwork() const {
    return running && state >= connectedLocal;
}

OnlineState::Links NetworkManager::Connection() const {
    static const QStringList modems{"gsm", "cdma", "ppp", "pppoe", "adsl", "bluetooth"};
    if (!Connected() || kind.isEmpty()) return {};
    return modems.contains(kind) ? OnlineState::Modem : OnlineState::Lan;
}

void NetworkManager::CheckConnectivity() {
    if (!running) return;
    bus.asyncCall(NmBus::Method(NmBus::Path, NmBus::Service, "CheckConnectivity"));
}

void NetworkManager::PropertiesChanged(const QString& interface, const QVariantMap& changed,
                                       const QStringList& invalidated) {
    if (interface != NmBus::Service) return;
    Apply(changed);
    if (!invalidated.isEmpty()) Fetch();
}

void NetworkManager::StateChanged(uint newState) {
    Apply({{"State", newState}});
}

void NetworkManager::BusLost() {
    OwnerChanged({});
}

void NetworkManager::OwnerChanged(const QString& newOwner) {
    if (running) {
        running = false;
        emit Changed();
    }
    if (!newOwner.isEmpty()) Fetch();
}

void NetworkManager::Fetch() {
    NmBus::Call(bus, GetState(), this, [this](const QDBusMessage& reply) { Take(reply); });
}

void NetworkManager::Take(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return;
    running = true;
    Apply(qdbus_cast<QVariantMap>(reply.arguments().constFirst()));
}

void NetworkManager::Apply(const QVariantMap& properties) {
    state = properties.value("State", state).toUInt();
    connectivity = properties.value("Connectivity", connectivity).toUInt();
    kind = properties.value("PrimaryConnectionType", kind).toString();
    emit Changed();
}
