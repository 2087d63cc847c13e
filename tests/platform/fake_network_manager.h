#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QMutex>
#include <QMutexLocker>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>
#include <QVariantMap>

#include <atomic>

// A message bus of the test's own, for as long as it lives.
class PrivateBus {
  public:
    PrivateBus();
    ~PrivateBus() { Stop(); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // A new connection to it; not connected when there is no bus daemon on this machine.
    [[nodiscard]] QDBusConnection Connect();
    void Stop();

  private:
    QTemporaryDir folder;  // of its socket, which a daemon that is killed leaves behind
    QProcess daemon;
    QString address;
    QStringList names;  // of the connections
};

// The part of NetworkManager's interface that the program uses. It answers in a thread of its own,
// as the real one does in another process, and can leave the bus and come back.
class FakeNetworkManager : public QDBusVirtualObject {
    Q_OBJECT

  public:
    using ProfileSettings = QMap<QString, QVariantMap>;

    explicit FakeNetworkManager(const QDBusConnection& bus);
    ~FakeNetworkManager() override;

    void Start() { bus.registerService(Service); }
    void Stop() { bus.unregisterService(Service); }
    // Takes calls and answers none of them, as a service that hangs.
    void SetSilent(bool nowSilent) { silent = nowSilent; }

    // Sets properties of NetworkManager itself and tells of them, by PropertiesChanged.
    void Set(const QVariantMap& properties) { Tell(Root, Service, properties); }
    // Adds a device, or sets its state and tells of it.
    void SetDevice(const QString& interface, uint state);
    // Adds a profile of the given kind.
    void AddProfile(const QString& name, const QString& type, const ProfileSettings& more = {});
    // Sets the state of the active connection `number` (from 1) and tells of it.
    void SetLine(int number, uint state) {
        Tell(Line(number), Service + ".Connection.Active", {{"State", state}});
    }

    // What was activated ("activate NAME") and deactivated ("deactivate NUMBER").
    [[nodiscard]] QStringList Calls() {
        const QMutexLocker lock(&mutex);
        return calls;
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& from) override;
    QString introspect(const QString& /*path*/) const override { return {}; }

  private:
    inline static const QString Service = QStringLiteral("org.freedesktop.NetworkManager");
    inline static const QString Root = QStringLiteral("/org/freedesktop/NetworkManager");

    static QString Line(int number) {
        return Root + "/ActiveConnection/" + QString::number(number);
    }
    void Tell(const QString& path, const QString& interface, const QVariantMap& properties);
    void Signal(const QString& path, const QString& interface, const QString& name,
                const QVariantList& arguments);
    QDBusMessage Answer(const QDBusMessage& call);
    QDBusMessage Activate(const QDBusMessage& call);

    QDBusConnection bus;
    QThread thread;
    std::atomic<bool> silent = false;
    QMutex mutex;                        // of everything below
    QMap<QString, QVariantMap> objects;  // properties by object path
    QStringList devices;
    QMap<QString, ProfileSettings> profiles;  // by object path
    QStringList calls;
    int lineCount = 0;
};
