#include "ui/settings/camera/camera_address.h"

#include <QRegularExpression>
#include <QUrl>

namespace {

const QString separator = QStringLiteral("://");
const QString dots = QStringLiteral("•••");

// Where the host begins behind name and password, and where those begin; the same where there are
// none.
struct Span {
    qsizetype Begin;
    qsizetype Host;
};

Span SpanOf(const QString& address) {
    const qsizetype mark = address.indexOf(separator);
    if (mark < 0) return {0, 0};
    const qsizetype begin = mark + separator.size();
    static const QRegularExpression endOfHost(QStringLiteral("[/?#]"));
    qsizetype end = address.indexOf(endOfHost, begin);
    if (end < 0) end = address.size();
    // An '@' may stand in a password that nobody has encoded.
    const qsizetype at = end > begin ? address.lastIndexOf(u'@', end - 1) : -1;
    return {begin, at < begin ? begin : at + 1};
}

QString Decoded(const QString& text) {
    return QUrl::fromPercentEncoding(text.toUtf8());
}

QString Encoded(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

}  // namespace

CameraAddress CameraAddress::Split(const QString& address) {
    const auto [begin, host] = SpanOf(address);
    if (host == begin) return {address, {}, {}};
    const QString access = address.mid(begin, host - begin - 1);
    const qsizetype colon = access.indexOf(u':');
    return {address.left(begin) + address.mid(host), Decoded(access.left(colon)),
            colon < 0 ? QString() : Decoded(access.mid(colon + 1))};
}

QString CameraAddress::Joined() const {
    const qsizetype mark = Place.indexOf(separator);
    if (mark < 0 || (User.isEmpty() && Password.isEmpty())) return Place;
    QString access = Encoded(User);
    if (!Password.isEmpty()) access += u':' + Encoded(Password);
    return QString(Place).insert(mark + separator.size(), access + u'@');
}

QString CameraAddress::WithoutSecrets(const QString& address) {
    CameraAddress parts = Split(address);
    static const QRegularExpression secret(
        QStringLiteral("([?&;][^=&;]*(?:pass|pwd|pw|psw|token|key|auth|secret)[^=&;]*=)[^&;#]*"),
        QRegularExpression::CaseInsensitiveOption);
    parts.Place.replace(secret, QStringLiteral("\\1") + dots);
    const qsizetype mark = parts.Place.indexOf(separator);
    if (parts.User.isEmpty() && parts.Password.isEmpty()) return parts.Place;
    const QString access = parts.User + (parts.Password.isEmpty() ? QString() : u':' + dots);
    return parts.Place.insert(mark + separator.size(), access + u'@');
}
