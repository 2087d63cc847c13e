#include "platform/linux/unmanaged_devices.h"

#include "platform/linux/nm_bus.h"

#include <QDBusArgument>
#include <QVariantMap>

namespace {
constexpr uint unmanaged = 10;  // NetworkManager's device state of that name
}

UnmanagedDevices::UnmanagedDevices(const QDBusConnection& ownBus) : bus(ownBus) {
    if (!bus.isConnected()) return;
    bus.connect(NmBus::Service, NmBus::Path, NmBus::Service, "DeviceAdded", this,
                SLOT(DevicesChanged()));
    bus.connect(NmBus::Service, NmBus::Path, NmBus::Service, "DeviceRemoved", this,
                SLOT(DevicesChanged()));
    bus.connect(NmBus::Service, {}, NmBus::Device, "StateChanged", this,
                SLOT(DeviceStateChanged(uint, uint, uint)));
}

void UnmanagedDevices::DeviceStateChanged(uint newState, uint oldState, uint /*reason*/) {
    if (newState == unmanaged || oldState == unmanaged) Fetch();
}

void UnmanagedDevices::DevicesChanged() {
    Fetch();
}

void UnmanagedDevices::Fetch() {
    auto listing = std::make_shared<Listing>();
    current = listing;
    const auto call = NmBus::Method(NmBus::Path, NmBus::Service, "GetDevices");
    NmBus::Call(bus, call, this, [this, listing](const QDBusMessage& reply) {
        const bool answered = reply.type() == QDBusMessage::ReplyMessage;
        const QStringList paths =
            answered ? NmBus::ObjectPaths(reply.arguments().value(0)) : QStringList();
        listing->Awaited = static_cast<int>(paths.size());
        for (const QString& path : paths) FetchDevice(path, listing);
        Finish(listing);
    });
}

void UnmanagedDevices::FetchDevice(const QString& path, const std::shared_ptr<Listing>& listing) {
    const auto call = NmBus::Method(path, NmBus::Properties, "GetAll", {NmBus::Device});
    NmBus::Call(bus, call, this, [this, listing](const QDBusMessage& reply) {
        const auto device = qdbus_cast<QVariantMap>(reply.arguments().value(0));
        if (device.value("State").toUInt() == unmanaged) {
            listing->Names << device.value("Interface").toString();
        }
        --listing->Awaited;
        Finish(listing);
    });
}

void UnmanagedDevices::Finish(const std::shared_ptr<Listing>& listing) {
    if (listing->Awaited > 0 || listing != current) return;
    names = listing->Names;
    emit Changed();
}
