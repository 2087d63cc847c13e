#include "net/tls_socket.h"

#include "net/certificates.h"
#include "platform/socket_options.h"

#include <QSslConfiguration>

namespace {

const QString leaving = QStringLiteral("leaving");

// Reads what comes until the peer has closed.
void ReadOut(qintptr descriptor, QObject* owner) {
    SocketOptions::EndSending(descriptor);
    auto* const rest = new QTcpSocket(owner);
    rest->setObjectName(leaving);
    QObject::connect(rest, &QTcpSocket::readyRead, rest, [rest] { rest->readAll(); });
    QObject::connect(rest, &QTcpSocket::disconnected, rest, &QObject::deleteLater);
    if (!rest->setSocketDescriptor(descriptor)) rest->deleteLater();
}

}  // namespace

TlsSocket::TlsSocket(const TlsTerms& ownTerms, QObject* parent)
    : QSslSocket(parent), terms(ownTerms) {
    connect(this, &QSslSocket::sslErrors, this, [this](const QList<QSslError>& found) {
        errors = found;
        Judge();
        if (verdict.Fine()) ignoreSslErrors();
    });
    connect(this, &QSslSocket::encrypted, this, [this] {
        Judge();
        if (!verdict.Fine()) return abort();
        established = true;
        emit Established();
    });
}

void TlsSocket::Begin() {
    begun = true;
    QSslConfiguration wanted = sslConfiguration();
    wanted.setProtocol(QSsl::TlsV1_2OrLater);
    wanted.setPeerVerifyMode(QSslSocket::VerifyPeer);
    wanted.setSslOption(QSsl::SslOptionDisableSessionPersistence, false);
    wanted.setSslOption(QSsl::SslOptionDisableSessionTickets, false);
    wanted.setSessionTicket(terms.Session);
    setSslConfiguration(wanted);
    setPeerVerifyName(terms.PeerName);
    startClientEncryption();
}

// With a session that goes on, the system's store is not asked again.
void TlsSocket::Judge() {
    const QSslCertificate shown = peerCertificate();
    if (terms.SamePeer.isNull())
        verdict = Certificates::Judge(shown, errors, terms.Trusted);
    else if (shown != terms.SamePeer)
        verdict = {ServerFault::EncryptionBroken, Certificates::Fingerprint(shown)};
}

ServerAnswer TlsSocket::Verdict() const {
    if (!begun || established || !verdict.Fine()) return verdict;
    const bool failed = error() != UnknownSocketError;
    return {ServerFault::EncryptionBroken, failed ? errorString() : QString()};
}

TlsTerms TlsSocket::ForOneMore() const {
    return {.Trusted = terms.Trusted,
            .PeerName = terms.PeerName,
            .Session = sslConfiguration().sessionTicket(),
            .SamePeer = peerCertificate()};
}

void TlsSocket::Leave(QObject* owner) {
    const auto others = owner->findChildren<QTcpSocket*>(leaving, Qt::FindDirectChildrenOnly);
    for (QTcpSocket* const other : others) {
        other->abort();
        other->deleteLater();
    }
    const qintptr open = SocketOptions::Duplicate(socketDescriptor());
    setParent(owner);
    setObjectName(leaving);
    connect(this, &QSslSocket::disconnected, this, [this, open, owner] {
        if (open != SocketOptions::NoDescriptor) ReadOut(open, owner);
        deleteLater();
    });
    disconnectFromHost();
}
