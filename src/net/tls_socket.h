#pragma once

#include "net/server_answer.h"
#include "net/tls_terms.h"

#include <QSslSocket>

// The client's end of a connection that can be encrypted. It reads and writes in the clear until
// Begin, and nothing at all until Established.
class TlsSocket : public QSslSocket {
    Q_OBJECT

  public:
    explicit TlsSocket(const TlsTerms& terms, QObject* parent = nullptr);

    // Starts encryption on the connection that stands. Established follows, or a fault of the
    // socket.
    void Begin();
    [[nodiscard]] bool Begun() const { return begun; }
    // Why the connection could not be encrypted.
    [[nodiscard]] ServerAnswer Verdict() const;
    // The terms of further connections to the same server.
    [[nodiscard]] TlsTerms ForOneMore() const;

    // Says that nothing more comes and deletes the socket once the peer has closed too; what it
    // still sends is dropped. A connection that simply is closed while the peer sends something,
    // if it is only a ticket for the next session, loses what the system still has to send.
    // owner: of what is left meanwhile, which is one socket at most: a peer that never closes has
    // time until the next one leaves.
    void Leave(QObject* owner);

  signals:
    // Encrypted, and the server is who it must be.
    void Established();

  private:
    void Judge();

    TlsTerms terms;
    QList<QSslError> errors;
    ServerAnswer verdict;
    bool begun = false;
    bool established = false;
};
