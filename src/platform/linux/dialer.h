#pragma once

#include "platform/dialer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QVariantMap>

#include <vector>

// Dial-up on Linux: NetworkManager's mobile, PPPoE, ADSL, Bluetooth dial-up and VPN connections
// are the phone-book entries. Everything is asked without blocking; without NetworkManager there
// are no entries and no dial ever stands.
class LinuxDialer : public Dialer {
    Q_OBJECT

  public:
    // bus: where NetworkManager is looked for. The entries are there soon after the event loop
    // runs, and follow every change.
    explicit LinuxDialer(const QDBusConnection& bus);

    [[nodiscard]] QStringList Entries() const override { return entries; }
    int Dial(const QString& entry, std::function<void(int handle)> dialled) override;
    void HangUp(int handle) override;

  private slots:
    void ProfilesChanged();
    void LinePropertiesChanged(const QString& interface, const QVariantMap& changed,
                               const QStringList& invalidated, const QDBusMessage& message);

  private:
    // A connection that was asked for, known by its handle from the start.
    struct Line {
        QString Entry;
        QString Path = {};  // of the active connection; empty until NetworkManager has named it
        bool Standing = false;
        std::vector<std::function<void(int)>> Waiting = {};
    };
    using Profiles = QMap<QString, QString>;  // object path by name

    void List(const std::function<void(const Profiles&)>& listed);
    void OwnerChanged(const QString& newOwner);
    void Activate(int handle, const Profiles& profiles);
    void Watch(int handle, const QString& path);
    void LineState(int handle, uint state);
    void Deactivate(const QString& path);
    void Drop(int handle);

    QDBusConnection bus;
    QDBusServiceWatcher owner;
    QStringList entries;
    int listings = 0;
    int lastHandle = 0;
    QMap<int, Line> lines;  // by handle
};
