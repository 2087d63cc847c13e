#pragma once

#include "base/clock.h"
#include "net/tls_terms.h"

#include <QAbstractSocket>
#include <QHostAddress>
#include <QList>
#include <QObject>

class TlsSocket;

// Connects to a server that may have several addresses, some of which lead nowhere: a further one
// is tried two seconds after the one before, or as soon as that has failed, while the former ones
// go on. Who answers first has won (after RFC 8305).
class AddressRace : public QObject {
    Q_OBJECT

  public:
    explicit AddressRace(Clock& clock);

    // host: a name or an address without brackets. Won or Lost follows, maybe at once.
    void Begin(const QString& host, quint16 port, const TlsTerms& terms);
    void Begin(const QList<QHostAddress>& addresses, quint16 port, const TlsTerms& terms);
    // Neither follows any more.
    void GiveUp();

    // The two kinds of addresses by turns, beginning with the first one.
    [[nodiscard]] static QList<QHostAddress> ByTurns(const QList<QHostAddress>& addresses);

  signals:
    // Connected, and not encrypted yet; from now on the receiver's.
    void Won(TlsSocket* socket);
    // The name has no address, or the last one has failed.
    void Lost(QAbstractSocket::SocketError error, const QString& text);

  private:
    void StartNext();
    void Fail(TlsSocket& socket);
    void Win(TlsSocket& socket);

    static constexpr int noLookup = -1;

    int lookup = noLookup;
    QList<QHostAddress> untried;
    quint16 port = 0;
    TlsTerms terms;
    QList<TlsSocket*> running;
    Timer turn;  // of the next one
};
