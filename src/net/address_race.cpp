#include "net/address_race.h"

#include "base/open_files.h"
#include "net/tls_socket.h"

#include <QHostInfo>
#include <QNetworkProxy>

#include <algorithm>
#include <utility>

namespace {

constexpr int headStartMilliseconds = 2000;

}  // namespace

AddressRace::AddressRace(Clock& clock) : turn(clock, headStartMilliseconds) {
    connect(&turn, &Timer::Tick, this, &AddressRace::StartNext);
}

void AddressRace::Begin(const QString& host, quint16 wantedPort, const TlsTerms& wantedTerms) {
    if (QHostAddress address; address.setAddress(host))
        return Begin(QList{address}, wantedPort, wantedTerms);
    GiveUp();
    if (!FilesLeft()) return emit Lost(QAbstractSocket::SocketResourceError, {});
    lookup =
        QHostInfo::lookupHost(host, this, [this, wantedPort, wantedTerms](const QHostInfo& found) {
            if (found.lookupId() != lookup) return;
            lookup = noLookup;
            if (found.addresses().isEmpty())
                emit Lost(QAbstractSocket::HostNotFoundError, found.errorString());
            else
                Begin(ByTurns(found.addresses()), wantedPort, wantedTerms);
        });
}

void AddressRace::Begin(const QList<QHostAddress>& addresses, quint16 wantedPort,
                        const TlsTerms& wantedTerms) {
    GiveUp();
    untried = addresses;
    port = wantedPort;
    terms = wantedTerms;
    StartNext();
}

QList<QHostAddress> AddressRace::ByTurns(const QList<QHostAddress>& addresses) {
    QList<QHostAddress> left = addresses;
    QList<QHostAddress> sorted;
    while (!left.isEmpty()) {
        const auto other = std::find_if(left.begin(), left.end(), [&](const QHostAddress& address) {
            return sorted.isEmpty() || address.protocol() != sorted.last().protocol();
        });
        sorted << left.takeAt(other == left.end() ? 0 : other - left.begin());
    }
    return sorted;
}

void AddressRace::StartNext() {
    turn.SetEnabled(false);
    if (untried.isEmpty()) return;
    turn.SetEnabled(untried.size() > 1);
    auto* const socket = new TlsSocket(terms, this);
    running << socket;
    socket->setProxy(QNetworkProxy::NoProxy);
    connect(socket, &TlsSocket::connected, this, [this, socket] { Win(*socket); });
    connect(socket, &TlsSocket::errorOccurred, this, [this, socket] { Fail(*socket); });
    socket->connectToHost(untried.takeFirst(), port);
}

void AddressRace::Fail(TlsSocket& socket) {
    running.removeOne(&socket);
    socket.disconnect(this);
    socket.deleteLater();
    if (!untried.isEmpty()) return StartNext();
    if (running.isEmpty()) emit Lost(socket.error(), socket.errorString());
}

void AddressRace::Win(TlsSocket& socket) {
    running.removeOne(&socket);
    socket.disconnect(this);
    GiveUp();
    emit Won(&socket);
}

void AddressRace::GiveUp() {
    lookup = noLookup;  // a late answer is left alone: to abort it would cost its memory in Qt 6.4
    untried.clear();
    turn.SetEnabled(false);
    for (TlsSocket* const socket : std::exchange(running, {})) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
}
