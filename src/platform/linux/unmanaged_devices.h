#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

// The interfaces that NetworkManager sees but leaves to somebody else, such as those that
// /etc/network/interfaces sets up. It calls the machine disconnected when there are no others.
class UnmanagedDevices : public QObject {
    Q_OBJECT

  public:
    explicit UnmanagedDevices(const QDBusConnection& bus);

    // Interface names; empty while NetworkManager does not run.
    [[nodiscard]] const QSet<QString>& Names() const { return names; }

    // Reads the list anew (the service has appeared); Changed() follows.
    void Fetch();

  signals:
    void Changed();

  private slots:
    void DeviceStateChanged(uint newState, uint oldState, uint reason);
    void DevicesChanged();

  private:
    // The answers about single devices, put in place together so that nobody sees half a list.
    struct Listing {
        int Awaited = 0;
        QSet<QString> Names;
    };
    void FetchDevice(const QString& path, const std::shared_ptr<Listing>& listing);
    void Finish(const std::shared_ptr<Listing>& listing);

    QDBusConnection bus;
    std::shared_ptr<Listing> current;
    QSet<QString> names;
};
