#include "net/certificates.h"

#include <QCryptographicHash>
#include <QSslCertificate>
#include <QSslError>

#include <algorithm>
#include <initializer_list>

namespace {

// Hexadecimal without what people put between the digits.
QString Bare(const QString& fingerprint) {
    return fingerprint.toLower().remove(u':').remove(u' ').trimmed();
}

bool HasOneOf(const QList<QSslError>& errors, std::initializer_list<QSslError::SslError> wanted) {
    return std::any_of(errors.begin(), errors.end(), [wanted](const QSslError& error) {
        return std::find(wanted.begin(), wanted.end(), error.error()) != wanted.end();
    });
}

ServerFault FaultOf(const QList<QSslError>& errors) {
    if (HasOneOf(errors, {QSslError::CertificateExpired, QSslError::CertificateNotYetValid}))
        return ServerFault::CertificateExpired;
    // Who is not vouched for may call himself anything.
    const bool nameOnly = std::all_of(errors.begin(), errors.end(), [](const QSslError& error) {
        return error.error() == QSslError::HostNameMismatch;
    });
    return nameOnly ? ServerFault::CertificateWrongName : ServerFault::CertificateUnknown;
}

}  // namespace

QString Certificates::Fingerprint(const QSslCertificate& certificate) {
    const QByteArray digest = certificate.digest(QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex(':').toUpper());
}

ServerAnswer Certificates::Judge(const QSslCertificate& certificate, const QList<QSslError>& errors,
                                 const QString& trusted) {
    const QString fingerprint = Fingerprint(certificate);
    const bool isTrusted = !trusted.isEmpty() && Bare(trusted) == Bare(fingerprint);
    if (isTrusted && !certificate.isNull()) return {};
    if (!trusted.isEmpty()) return {ServerFault::CertificateChanged, fingerprint};
    if (errors.isEmpty()) return {};
    return {FaultOf(errors), fingerprint};
}
