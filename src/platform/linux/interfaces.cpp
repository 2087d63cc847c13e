#include "platform/linux/interfaces.h"

#include <QNetworkInterface>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Every interface that is up gives itself a link-local address; one that a server handed out, or
// the operator wrote down, tells that there is a network behind it.
bool ReachesFurther(const QNetworkAddressEntry& entry) {
    return !entry.ip().isLinkLocal() && !entry.ip().isLoopback();
}

bool IsLinkLocal(const QNetworkAddressEntry& entry) {
    return entry.ip().isLinkLocal();
}

// Opens the kernel's notifications about interfaces and addresses; -1 when they are not to be had.
int OpenNotifications() {
    const int socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    if (socket < 0) return -1;
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
    if (bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        return socket;
    }
    close(socket);
    return -1;
}

}  // namespace

QList<NetworkInterface> ReadInterfaces() {
    QList<NetworkInterface> list;
    for (const QNetworkInterface& found : QNetworkInterface::allInterfaces()) {
        const auto flags = found.flags();
        list << NetworkInterface{
            .Name = found.name(),
            .Up = flags.testFlags(QNetworkInterface::IsUp | QNetworkInterface::IsRunning),
            .Loopback = flags.testFlag(QNetworkInterface::IsLoopBack),
            .HasAddress = std::ranges::any_of(found.addressEntries(), ReachesFurther),
            .HasLinkLocal = std::ranges::any_of(found.addressEntries(), IsLinkLocal)};
    }
    return list;
}

bool LeadsOut(const NetworkInterface& interface) {
    return interface.Up && interface.HasAddress && !interface.Loopback;
}

bool HasNeighbours(const NetworkInterface& interface) {
    return interface.Up && (interface.HasAddress || interface.HasLinkLocal) && !interface.Loopback;
}

OnlineState::Links LinksOf(const QList<NetworkInterface>& interfaces) {
    OnlineState::Links links;
    for (const NetworkInterface& interface : interfaces) {
        if (!LeadsOut(interface)) continue;
        const bool modem = interface.Name.startsWith("ppp") || interface.Name.startsWith("ww");
        links |= modem ? OnlineState::Modem : OnlineState::Lan;
    }
    return links;
}

InterfaceWatch::InterfaceWatch(Reader reader)
    : read(std::move(reader)), socket(OpenNotifications()), interfaces(read()) {
    if (socket < 0) return;
    auto* const notifier = new QSocketNotifier(socket, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &InterfaceWatch::Notified);
}

InterfaceWatch::~InterfaceWatch() {
    qDeleteAll(findChildren<QSocketNotifier*>());
    if (socket >= 0) close(socket);
}

void InterfaceWatch::Notified() {
    // What changed is not taken from the messages: some may have been lost in a burst, and the
    // list as a whole is small.
    std::array<char, 8192> message{};
    ssize_t got = 0;
    do {
        got = recv(socket, message.data(), message.size(), 0);
    } while (got > 0 || (got < 0 && (errno == EINTR || errno == ENOBUFS)));

    QList<NetworkInterface> now = read();
    if (now == interfaces) return;
    interfaces = std::move(now);
    emit Changed();
}
