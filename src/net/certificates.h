#pragma once

#include "net/server_answer.h"

#include <QList>

class QSslCertificate;
class QSslError;

// Who a server proves to be.
namespace Certificates {

// SHA-256 of the whole certificate: "AB:CD:…", 32 pairs.
[[nodiscard]] QString Fingerprint(const QSslCertificate& certificate);

// What to think of a server with this certificate, of which the system's store says these errors.
// trusted: the fingerprint of the only one that the operator accepts, colons and case do not
// matter; empty: any that the store vouches for under the server's name. The reply of a fault is
// the fingerprint.
[[nodiscard]] ServerAnswer Judge(const QSslCertificate& certificate, const QList<QSslError>& errors,
                                 const QString& trusted);

}  // namespace Certificates
