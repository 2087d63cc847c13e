#include "platform/linux/dialer.h"

#include "platform/linux/nm_bus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

using ProfileSettings = QMap<QString, QVariantMap>;

// States of NetworkManager's active connections.
constexpr uint activated = 2;
constexpr uint deactivating = 3;

bool IsDialUp(const ProfileSettings& profile) {
    static const QStringList kinds{"gsm", "cdma", "pppoe", "adsl", "vpn", "wireguard"};
    const QString kind = profile.value("connection").value("type").toString();
    if (kind == "bluetooth") return profile.value("bluetooth").value("type").toString() == "dun";
    return kinds.contains(kind);
}

QVariant ObjectPath(const QString& path) {
    return QVariant::fromValue(QDBusObjectPath(path));
}

bool Succeeded(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty();
}

}  // namespace

LinuxDialer::LinuxDialer(const QDBusConnection& ownBus)
    : bus(ownBus), owner(NmBus::Service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus.isConnected()) return;
    connect(&owner, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& now) { OwnerChanged(now); });
    for (const char* signal : {"NewConnection", "ConnectionRemoved"}) {
        bus.connect(NmBus::Service, NmBus::SettingsPath, NmBus::Settings,
                    QString::fromLatin1(signal), this, SLOT(ProfilesChanged()));
    }
    bus.connect(NmBus::Service, {}, NmBus::Profile, "Updated", this, SLOT(ProfilesChanged()));
    ProfilesChanged();
}

void LinuxDialer::OwnerChanged(const QString& newOwner) {
    // Another run of the service knows nothing of the old one's connections, and uses their object
    // paths again for other ones.
    for (const int handle : lines.keys()) Drop(handle);
    entries.clear();
    ++listings;
    if (!newOwner.isEmpty()) ProfilesChanged();
}

void LinuxDialer::ProfilesChanged() {
    const int listing = ++listings;
    List([this, listing](const Profiles& profiles) {
        if (listing == listings) entries = profiles.keys();
    });
}

void LinuxDialer::List(const std::function<void(const Profiles&)>& listed) {
    const auto call = NmBus::Method(NmBus::SettingsPath, NmBus::Settings, "ListConnections");
    NmBus::Call(bus, call, this, [this, listed](const QDBusMessage& reply) {
        const QStringList paths =
            Succeeded(reply) ? NmBus::ObjectPaths(reply.arguments().constFirst()) : QStringList();
        if (paths.isEmpty()) return listed({});
        const auto awaited = std::make_shared<qsizetype>(paths.size());
        const auto found = std::make_shared<Profiles>();
        for (const QString& path : paths) {
            const auto settings = NmBus::Method(path, NmBus::Profile, "GetSettings");
            NmBus::Call(bus, settings, this, [=](const QDBusMessage& answer) {
                const auto profile = qdbus_cast<ProfileSettings>(answer.arguments().value(0));
                const QString name = profile.value("connection").value("id").toString();
                if (IsDialUp(profile) && !found->contains(name)) found->insert(name, path);
                if (--*awaited == 0) listed(*found);
            });
        }
    });
}

int LinuxDialer::Dial(const QString& entry, std::function<void(int)> dialled) {
    // Activating a connection a second time would cut the line that stands or is coming up.
    const auto known = std::find_if(lines.begin(), lines.end(),
                                    [&entry](const Line& line) { return line.Entry == entry; });
    if (known == lines.end()) {
        const int handle = ++lastHandle;
        lines[handle] = {.Entry = entry, .Waiting = {std::move(dialled)}};
        List([this, handle](const Profiles& profiles) { Activate(handle, profiles); });
        return handle;
    }
    if (known->Standing) {
        QMetaObject::invokeMethod(
            this, [dialled = std::move(dialled), handle = known.key()] { dialled(handle); },
            Qt::QueuedConnection);
    } else {
        known->Waiting.push_back(std::move(dialled));
    }
    return known.key();
}

void LinuxDialer::Activate(int handle, const Profiles& profiles) {
    if (!lines.contains(handle)) return;
    const QString profile = profiles.value(lines[handle].Entry);
    if (profile.isEmpty()) return Drop(handle);
    const auto call = NmBus::Method(NmBus::Path, NmBus::Service, "ActivateConnection",
                                    {ObjectPath(profile), ObjectPath("/"), ObjectPath("/")});
    NmBus::Call(bus, call, this, [this, handle](const QDBusMessage& reply) {
        if (!Succeeded(reply)) return Drop(handle);
        const QString path = reply.arguments().constFirst().value<QDBusObjectPath>().path();
        // It may have been hung up before NetworkManager has named it.
        lines.contains(handle) ? Watch(handle, path) : Deactivate(path);
    });
}

void LinuxDialer::Watch(int handle, const QString& path) {
    lines[handle].Path = path;
    bus.connect(NmBus::Service, path, NmBus::Properties, "PropertiesChanged", this,
                SLOT(LinePropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    // The line may stand already, or have failed, before the notifications were ordered.
    const auto call =
        NmBus::Method(path, NmBus::Properties, "Get", {NmBus::Active, QStringLiteral("State")});
    NmBus::Call(bus, call, this, [this, handle](const QDBusMessage& reply) {
        if (!Succeeded(reply)) return Drop(handle);
        LineState(handle, reply.arguments().constFirst().value<QDBusVariant>().variant().toUInt());
    });
}

void LinuxDialer::LinePropertiesChanged(const QString& interface, const QVariantMap& changed,
                                        const QStringList& /*invalidated*/,
                                        const QDBusMessage& message) {
    if (interface != NmBus::Active || !changed.contains("State")) return;
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        if (line->Path == message.path()) {
            return LineState(line.key(), changed.value("State").toUInt());
        }
    }
}

void LinuxDialer::LineState(int handle, uint state) {
    if (!lines.contains(handle)) return;
    if (state >= deactivating) return Drop(handle);
    Line& line = lines[handle];
    line.Standing = line.Standing || state == activated;
    if (!line.Standing) return;
    for (const auto& dialled : std::exchange(line.Waiting, {})) dialled(handle);
}

void LinuxDialer::HangUp(int handle) {
    const QString path = lines.value(handle).Path;
    if (!path.isEmpty()) Deactivate(path);
    Drop(handle);
}

void LinuxDialer::Deactivate(const QString& path) {
    bus.asyncCall(
        NmBus::Method(NmBus::Path, NmBus::Service, "DeactivateConnection", {ObjectPath(path)}));
}

void LinuxDialer::Drop(int handle) {
    const Line line = lines.take(handle);
    if (line.Path.isEmpty()) return;
    bus.disconnect(NmBus::Service, line.Path, NmBus::Properties, "PropertiesChanged", this,
                   SLOT(LinePropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
}
