#include "platform/linux/online_state.h"

#include <algorithm>

namespace {

bool ProxyConfigured() {
    const auto set = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
    return set("http_proxy") || set("https_proxy") || set("HTTP_PROXY") || set("HTTPS_PROXY");
}

}  // namespace

LinuxOnlineState::LinuxOnlineState(const QDBusConnection& bus, InterfaceWatch::Reader reader)
    : interfaces(std::move(reader)), manager(bus), unmanaged(bus) {
    connect(&interfaces, &InterfaceWatch::Changed, this, &LinuxOnlineState::Judge);
    connect(&manager, &NetworkManager::Changed, this, &LinuxOnlineState::Judge);
    connect(&unmanaged, &UnmanagedDevices::Changed, this, &LinuxOnlineState::Judge);
    Judge();
}

void LinuxOnlineState::ForceOnline() {
    manager.CheckConnectivity();
}

// The interfaces that NetworkManager does not speak for: all of them where it does not run.
QList<NetworkInterface> LinuxOnlineState::OwnInterfaces() const {
    if (!manager.Running()) return interfaces.Interfaces();
    QList<NetworkInterface> own;
    for (const NetworkInterface& interface : interfaces.Interfaces()) {
        if (unmanaged.Names().contains(interface.Name)) own << interface;
    }
    return own;
}

void LinuxOnlineState::Judge() {
    if (manager.Running() && !managerRan) unmanaged.Fetch();
    managerRan = manager.Running();

    const QList<NetworkInterface> ownInterfaces = OwnInterfaces();
    const Links own = LinksOf(ownInterfaces);
    const bool nowConnected = manager.Connected() || own != Links();
    const bool nowReachable =
        nowConnected || manager.OnANetwork() || std::ranges::any_of(ownInterfaces, HasNeighbours);
    Links nowLinks = manager.Connection() | own;
    if (nowConnected && ProxyConfigured()) nowLinks |= Proxy;
    if (nowConnected == connected && nowReachable == reachable && nowLinks == links) return;
    connected = nowConnected;
    reachable = nowReachable;
    links = nowLinks;
    emit Changed();
}
