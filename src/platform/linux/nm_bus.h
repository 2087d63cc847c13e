#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <functional>

// NetworkManager's names on the bus, and the one way in which it is called: without blocking, and
// without starting a service that the machine's owner has switched off.
namespace NmBus {

inline const QString Service = QStringLiteral("org.freedesktop.NetworkManager");
inline const QString Path = QStringLiteral("/org/freedesktop/NetworkManager");
inline const QString SettingsPath = QStringLiteral("/org/freedesktop/NetworkManager/Settings");
inline const QString Settings = QStringLiteral("org.freedesktop.NetworkManager.Settings");
inline const QString Profile = QStringLiteral("org.freedesktop.NetworkManager.Settings.Connection");
inline const QString Active = QStringLiteral("org.freedesktop.NetworkManager.Connection.Active");
inline const QString Device = QStringLiteral("org.freedesktop.NetworkManager.Device");
inline const QString Properties = QStringLiteral("org.freedesktop.DBus.Properties");

// A call of `method` at the object `path` of NetworkManager.
[[nodiscard]] QDBusMessage Method(const QString& path, const QString& interface,
                                  const QString& method, const QVariantList& arguments = {});

// Sends the call. done(reply) comes from the event loop, with an error message when the call
// failed; not at all once `context` is gone.
void Call(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
          std::function<void(const QDBusMessage& reply)> done);

// The argument of a reply (or of a signal) as a list of object paths; empty when it is none.
[[nodiscard]] QStringList ObjectPaths(const QVariant& argument);

}  // namespace NmBus
