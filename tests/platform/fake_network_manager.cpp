#include "platform/fake_network_manager.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QMutexLocker>

#include <csignal>

#include <sys/prctl.h>

namespace {

QVariant Paths(const QStringList& paths) {
    QList<QDBusObjectPath> list;
    for (const QString& path : paths) list << QDBusObjectPath(path);
    return QVariant::fromValue(list);
}

}  // namespace

PrivateBus::PrivateBus() {
    // A test that is killed takes it along.
    daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address",
                                 "--address=unix:dir=" + folder.path()});
    if (!daemon.waitForStarted() || !daemon.waitForReadyRead()) return;
    address = QString::fromUtf8(daemon.readLine().trimmed());
}

QDBusConnection PrivateBus::Connect() {
    static int count = 0;
    names << QString("private %1").arg(++count);
    return QDBusConnection::connectToBus(address, names.last());
}

void PrivateBus::Stop() {
    daemon.kill();
    daemon.waitForFinished();
    for (const QString& name : names) QDBusConnection::disconnectFromBus(name);
}

FakeNetworkManager::FakeNetworkManager(const QDBusConnection& ownBus) : bus(ownBus) {
    qDBusRegisterMetaType<ProfileSettings>();
    objects[Root] = {{"State", 20U}, {"Connectivity", 1U}, {"PrimaryConnectionType", QString()}};
    bus.registerVirtualObject(Root, this, QDBusConnection::SubPath);
    moveToThread(&thread);
    thread.start();
}

FakeNetworkManager::~FakeNetworkManager() {
    bus.unregisterObject(Root, QDBusConnection::UnregisterTree);
    thread.quit();
    thread.wait();
}

void FakeNetworkManager::SetDevice(const QString& interface, uint state) {
    const QString path = Root + "/Devices/" + interface;
    uint before = 0;
    bool added = false;
    {
        const QMutexLocker lock(&mutex);
        before = objects[path].value("State").toUInt();
        objects[path] = {{"Interface", interface}, {"State", state}};
        added = !devices.contains(path);
        if (added) devices << path;
    }
    if (added) {
        Signal(Root, Service, "DeviceAdded", {QVariant::fromValue(QDBusObjectPath(path))});
    } else {
        Signal(path, Service + ".Device", "StateChanged", {state, before, 0U});
    }
}

void FakeNetworkManager::AddProfile(const QString& name, const QString& type,
                                    const ProfileSettings& more) {
    ProfileSettings profile = more;
    profile["connection"] = {{"id", name}, {"type", type}};
    const QMutexLocker lock(&mutex);
    const QString path = QString("%1/Settings/%2").arg(Root).arg(profiles.size());
    profiles[path] = profile;
    Signal(Root + "/Settings", Service + ".Settings", "NewConnection",
           {QVariant::fromValue(QDBusObjectPath(path))});
}

void FakeNetworkManager::Tell(const QString& path, const QString& interface,
                              const QVariantMap& properties) {
    {
        const QMutexLocker lock(&mutex);
        objects[path].insert(properties);
    }
    Signal(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
           {interface, properties, QStringList()});
}

void FakeNetworkManager::Signal(const QString& path, const QString& interface, const QString& name,
                                const QVariantList& arguments) {
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(arguments);
    bus.send(signal);
}

bool FakeNetworkManager::handleMessage(const QDBusMessage& message, const QDBusConnection& from) {
    return silent || from.send(Answer(message));
}

QDBusMessage FakeNetworkManager::Answer(const QDBusMessage& call) {
    const QMutexLocker lock(&mutex);
    const QString method = call.member();
    if (method == "GetSettings" && profiles.contains(call.path())) {
        return call.createReply(QVariant::fromValue(profiles.value(call.path())));
    }
    if (method == "ListConnections") return call.createReply(Paths(profiles.keys()));
    if (method == "GetDevices") return call.createReply(Paths(devices));
    if (method == "ActivateConnection") return Activate(call);
    if (method == "DeactivateConnection") {
        const auto path = call.arguments().value(0).value<QDBusObjectPath>().path();
        calls << "deactivate " + path.section('/', -1);
        return call.createReply();
    }
    if (objects.contains(call.path())) {
        const QVariantMap properties = objects.value(call.path());
        if (method == "GetAll") return call.createReply(properties);
        const QVariant value = properties.value(call.arguments().value(1).toString());
        if (method == "Get") return call.createReply(QVariant::fromValue(QDBusVariant(value)));
    }
    return call.createErrorReply(QDBusError::UnknownObject, call.path() + " " + method);
}

QDBusMessage FakeNetworkManager::Activate(const QDBusMessage& call) {
    const auto profile = call.arguments().value(0).value<QDBusObjectPath>().path();
    calls << "activate " + profiles.value(profile)["connection"].value("id").toString();
    const QString line = Line(++lineCount);
    objects[line] = {{"State", 1U}};
    return call.createReply(QVariant::fromValue(QDBusObjectPath(line)));
}
