#include "platform/linux/nm_bus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>

QDBusMessage NmBus::Method(const QString& path, const QString& interface, const QString& method,
                           const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(Service, path, interface, method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

void NmBus::Call(const QDBusConnection& bus, const QDBusMessage& call, QObject* context,
                 std::function<void(const QDBusMessage&)> done) {
    auto* const pending = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, context,
                     [pending, done = std::move(done)] {
                         pending->deleteLater();
                         done(pending->reply());
                     });
}

QStringList NmBus::ObjectPaths(const QVariant& argument) {
    QStringList paths;
    for (const QDBusObjectPath& path : qdbus_cast<QList<QDBusObjectPath>>(argument)) {
        paths << path.path();
    }
    return paths;
}
