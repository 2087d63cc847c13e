#pragma once

#include "platform/linux/interfaces.h"
#include "platform/linux/network_manager.h"
#include "platform/linux/unmanaged_devices.h"
#include "platform/online_state.h"

// Online or not on Linux: NetworkManager's answer where it runs, else whether an interface other
// than the loopback is up with an address. The service may come and go meanwhile.
class LinuxOnlineState : public OnlineState {
    Q_OBJECT

  public:
    // bus: where NetworkManager is looked for. reader: where the interfaces come from. The answer
    // is there when this returns, after at most half a second.
    explicit LinuxOnlineState(const QDBusConnection& bus,
                              InterfaceWatch::Reader reader = ReadInterfaces);

    [[nodiscard]] bool Connected() const override { return connected; }
    [[nodiscard]] bool Reachable() const override { return reachable; }
    // Proxy is added where the environment names one and something is connected.
    [[nodiscard]] Links Connection() const override { return links; }
    // The system's state cannot be set here; NetworkManager is asked to look again.
    void ForceOnline() override;

  private:
    void Judge();
    [[nodiscard]] QList<NetworkInterface> OwnInterfaces() const;

    InterfaceWatch interfaces;
    NetworkManager manager;
    UnmanagedDevices unmanaged;
    bool managerRan = false;
    bool connected = false;
    bool reachable = false;
    Links links;
};
