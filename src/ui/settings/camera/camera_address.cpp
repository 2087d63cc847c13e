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

// The last '@' that a host follows.
qsizetype LastBeforeHost(const QString& address, qsizetype begin) {
    static const QRegularExpression host(
        QStringLiteral(R"(@(?=(\[[0-9A-Fa-f:.]+\]|[^][@:/?#\s]+)(:[0-9]{1,5})?([/?#]|$)))"));
    qsizetype at = -1;
    for (auto found = host.match(address, begin); found.hasMatch();
         found = host.match(address, at + 1))
        at = found.capturedStart();
    return at;
}

Span SpanOf(const QString& address) {
    const qsizetype mark = address.indexOf(separator);
    if (mark < 0) return {0, 0};
    const qsizetype begin = mark + separator.size();
    static const QRegularExpression endOfHost(QStringLiteral("[/?#]"));
    qsizetype end = address.indexOf(endOfHost, begin);
    if (end < 0) end = address.size();
    // An '@' may stand in a password that nobody has encoded.
    qsizetype at = end > begin ? address.lastIndexOf(u'@', end - 1) : -1;
    // A colon, and no port behind it: this is no host but the beginning of a plain password.
    static const QRegularExpression password(QStringLiteral("^[^:[]+:(?![0-9]{1,5}$)"));
    if (at < begin && password.match(address.mid(begin, end - begin)).hasMatch())
        at = LastBeforeHost(address, begin);
    return {begin, at < begin ? begin : at + 1};
}

QString PercentEncoded(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

// With that encoded which has to be, and is not yet: a '%' is plain where it begins no code.
QString Mended(const QString& access) {
    static const QRegularExpression code(QStringLiteral("%25(?=[0-9A-Fa-f]{2})"));
    QString text = QString::fromLatin1(QUrl::toPercentEncoding(access, "!$&'()*+,;=:"));
    return text.replace(code, QStringLiteral("%"));
}

QString Decoded(const QString& text) {
    return QUrl::fromPercentEncoding(Mended(text).toLatin1());
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
    if (mark < 0 || !HasAccess()) return Place;
    QString access = PercentEncoded(User);
    if (!Password.isEmpty()) access += u':' + PercentEncoded(Password);
    return QString(Place).insert(mark + separator.size(), access + u'@');
}

QString CameraAddress::Encoded(const QString& address) {
    const auto [begin, host] = SpanOf(address);
    if (host == begin) return address;
    return address.left(begin) + Mended(address.mid(begin, host - begin - 1)) +
           address.mid(host - 1);
}

QString CameraAddress::WithoutSecrets(const QString& address) {
    CameraAddress parts = Split(address);
    static const QRegularExpression secret(
        QStringLiteral("([?&;][^=&;]*(?:pass|pwd|pw|psw|token|key|auth|secret)[^=&;]*=)[^&;#]*"),
        QRegularExpression::CaseInsensitiveOption);
    parts.Place.replace(secret, QStringLiteral("\\1") + dots);
    const qsizetype mark = parts.Place.indexOf(separator);
    if (!parts.HasAccess()) return parts.Place;
    const QString access = parts.User + (parts.Password.isEmpty() ? QString() : u':' + dots);
    return parts.Place.insert(mark + separator.size(), access + u'@');
}
