#include "platform/fake_network_manager.h"
#include "platform/linux/dialer.h"
#include "platform/linux/online_state.h"
#include "platform/service_contracts.h"
#include "support/data_rows.h"

using Links = OnlineState::Links;

namespace {

constexpr uint disconnected = 20;
constexpr uint local = 50;
constexpr uint site = 60;
constexpr uint global = 70;

QVariantMap Global(const QString& kind) {
    return {{"State", global}, {"Connectivity", 4U}, {"PrimaryConnectionType", kind}};
}

// A machine whose only way out, as far as the kernel knows, is a mobile modem.
QList<NetworkInterface> ModemOnly() {
    return {{.Name = "lo", .Up = true, .Loopback = true, .HasAddress = true},
            {.Name = "wwan0", .Up = true, .HasAddress = true}};
}

QList<NetworkInterface> Nothing() {
    return {};
}

class PlayedService : public PlayedModem, public PlayedNetwork {
  public:
    PlayedService(PrivateBus& bus, FakeNetworkManager& service)
        : manager(service), dialer(bus.Connect()), online(bus.Connect(), Nothing) {
        manager.AddProfile("Stick", "gsm");
    }

    Dialer& Phone() override { return dialer; }
    QStringList Dialled() override { return Calls("activate "); }
    QStringList HungUp() override {
        QStringList entries;
        for (const QString& number : Calls("deactivate "))
            entries << Dialled().value(number.toInt() - 1);
        return entries;
    }
    void Answer(bool stands) override { SetLine(stands ? 2 : 4); }
    void Cut() override { SetLine(4); }

    OnlineState& State() override { return online; }
    void Set(bool connected, Links links) override {
        const bool lan = links == OnlineState::Lan;
        manager.Set({{"State", connected ? global : disconnected},
                     {"Connectivity", 4U},
                     {"PrimaryConnectionType", lan ? QString("802-3-ethernet") : QString("gsm")}});
    }

  private:
    void SetLine(uint state) { manager.SetLine(static_cast<int>(Dialled().size()), state); }
    QStringList Calls(const QString& kind) {
        QStringList found;
        for (const QString& call : manager.Calls())
            if (call.startsWith(kind)) found << call.mid(kind.size());
        return found;
    }

    FakeNetworkManager& manager;
    LinuxDialer dialer;
    LinuxOnlineState online;
};

}  // namespace

class TestNetworkManager : public ServiceContracts {
    Q_OBJECT

  private slots:
    void init() {
        for (const char* name : {"http_proxy", "https_proxy", "HTTP_PROXY", "HTTPS_PROXY"})
            qunsetenv(name);
        bus = std::make_unique<PrivateBus>();
        const QDBusConnection server = bus->Connect();
        if (!server.isConnected()) QSKIP("no dbus-daemon on this machine");
        manager = std::make_unique<FakeNetworkManager>(server);
        manager->Start();
    }

    void cleanup() {
        manager.reset();
        bus.reset();
    }

    void states_data() {
        const Rows<uint, uint, QString, bool, bool, Links> row;
        row("phone", global, 4U, "bluetooth", true, true, OnlineState::Modem);
        row("kind not told", global, 4U, "", true, true, {});
        row("own probe fails", site, 3U, "bridge", true, true, OnlineState::Lan);
        row("site that is connected to nothing", site, 1U, "", false, true, {});
        row("no default route", local, 1U, "802-3-ethernet", false, true, {});
        row("connectivity lost first", global, 1U, "gsm", false, true, {});
        row("connecting", 40U, 1U, "gsm", false, false, {});
    }
    void states() {
        const auto [state, connectivity, kind, connected, reachable, links] =
            Row<uint, uint, QString, bool, bool, Links>();
        manager->Set(
            {{"State", state}, {"Connectivity", connectivity}, {"PrimaryConnectionType", kind}});
        // The kernel's view differs on purpose: the service's own is the one that counts.
        const LinuxOnlineState online(bus->Connect(), ModemOnly);
        // The first answer is there at once, without the event loop.
        QCOMPARE(online.Connected(), connected);
        QCOMPARE(online.Reachable(), reachable);
        QCOMPARE(online.Connection(), links);
    }

    void fallsBackWhileServiceIsAway() {
        manager->Set(Global("802-3-ethernet"));
        const LinuxOnlineState online(bus->Connect(), ModemOnly);
        QCOMPARE(online.Connection(), Links(OnlineState::Lan));
        manager->Stop();
        QTRY_COMPARE(online.Connection(), Links(OnlineState::Modem));
        QVERIFY(online.Connected());
        manager->Start();
        QTRY_COMPARE(online.Connection(), Links(OnlineState::Lan));
        manager->Set({{"State", disconnected}});
        QTRY_VERIFY(!online.Connected());
        bus->Stop();
        QTRY_VERIFY(online.Connected());
    }

    void worksWithoutBus() {
        const auto none = QDBusConnection::connectToBus("unix:path=/nowhere", "none");
        QVERIFY(!none.isConnected());
        LinuxOnlineState online(none, ModemOnly);
        QVERIFY(online.Connected());
        const LinuxOnlineState cable(none, [] {
            return QList{NetworkInterface{.Name = "eth0", .Up = true, .HasLinkLocal = true}};
        });
        QVERIFY(cable.Reachable() && !cable.Connected());
        online.ForceOnline();
        QCOMPARE(LinuxDialer(none).Entries(), QStringList());
    }

    void hungServiceDelaysStartBriefly() {
        manager->SetSilent(true);
        QElapsedTimer timer;
        timer.start();
        const LinuxOnlineState online(bus->Connect(), ModemOnly);
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(online.Connected());
    }

    void countsInterfacesLeftToOthers() {
        LinuxOnlineState online(bus->Connect(), ModemOnly);
        manager->SetDevice("eth0", 10);
        manager->SetDevice("wwan0", 30);
        manager->Set({{"State", local}});
        QVERIFY(!online.Connected());
        manager->SetDevice("wwan0", 10);  // unmanaged
        QTRY_VERIFY(online.Connected());
        QCOMPARE(online.Connection(), Links(OnlineState::Modem));
        // A second start finds the device as it is.
        const LinuxOnlineState second(bus->Connect(), ModemOnly);
        QTRY_VERIFY(second.Connected());
        manager->SetDevice("wwan0", 30);
        QTRY_VERIFY(!online.Connected());
    }

    void listsDialUpEntries() {
        manager->AddProfile("House", "802-3-ethernet");
        manager->AddProfile("Stick", "gsm");
        manager->AddProfile("Phone", "bluetooth", {{"bluetooth", {{"type", "dun"}}}});
        manager->AddProfile("Headset net", "bluetooth", {{"bluetooth", {{"type", "panu"}}}});
        manager->AddProfile("Bureau \u00e9t\u00e9", "vpn");
        const LinuxDialer dialer(bus->Connect());
        QTRY_COMPARE(dialer.Entries(), QStringList({"Bureau \u00e9t\u00e9", "Phone", "Stick"}));
        manager->Stop();
        QTRY_COMPARE(dialer.Entries(), QStringList());
    }

  private:
    std::unique_ptr<PlayedModem> Modem() override {
        return std::make_unique<PlayedService>(*bus, *manager);
    }
    std::unique_ptr<PlayedNetwork> Network() override {
        return std::make_unique<PlayedService>(*bus, *manager);
    }

    std::unique_ptr<PrivateBus> bus;
    std::unique_ptr<FakeNetworkManager> manager;
};

QTEST_GUILESS_MAIN(TestNetworkManager)
#include "test_network_manager.moc"
