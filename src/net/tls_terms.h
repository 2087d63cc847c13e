#pragma once

#include <QByteArray>
#include <QSslCertificate>
#include <QString>

// What is asked of the server of an encrypted connection.
struct TlsTerms {
    QString Trusted;        // see Certificates::Judge
    QString PeerName = {};  // which its certificate has to bear; empty: the one connected to
    // A second connection to a server: goes on with the session of the first one, and takes only
    // the certificate of that.
    QByteArray Session = {};
    QSslCertificate SamePeer = QSslCertificate();
};
