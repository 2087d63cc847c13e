#include "net/web/web_place.h"

#include "net/server_access.h"

#include <QHostAddress>
#include <QRegularExpression>
#include <QUrl>

namespace {

constexpr int usualPort = 80;
constexpr int usualSecurePort = 443;
constexpr int ftpPort = 21;  // what the settings hold where nobody has set a port

quint16 UsualPort(bool secure) {
    return secure ? usualSecurePort : usualPort;
}

// As sockets take it. The zone of an IPv6 address stands behind "%25" in an address (RFC 6874) and
// is a word; with anything else in it the address would not be read again as it was written.
QString HostOf(const QUrl& url) {
    QString host = url.host(QUrl::FullyEncoded);
    if (!url.authority(QUrl::FullyEncoded).contains(u'[')) return host;
    static const QRegularExpression form(QStringLiteral("^[0-9a-f:.]+(%25[A-Za-z0-9._~-]+)?$"));
    return form.match(host).hasMatch() ? host.replace("%25", "%") : QString();
}

WebPlace OfUrl(const QUrl& url) {
    const bool secure = url.scheme() == QStringLiteral("https");
    if (!url.isValid() || (!secure && url.scheme() != QStringLiteral("http"))) return {};
    return {.Secure = secure,
            .Host = HostOf(url),
            .Port = static_cast<quint16>(url.port(UsualPort(secure)))};
}

QString WithScheme(const QString& server, Protocol way) {
    if (server.contains(QStringLiteral("://"))) return server;
    const bool bare = QHostAddress(server).protocol() == QAbstractSocket::IPv6Protocol;
    const QString host = bare ? u'[' + server + u']' : server;
    return (way == Protocol::Http ? QStringLiteral("http://") : QStringLiteral("https://")) + host;
}

}  // namespace

WebPlace WebPlace::Of(const ServerAccess& access) {
    const QUrl url(WithScheme(access.Server.trimmed(), access.Way));
    WebPlace place = OfUrl(url);
    const bool set = access.Port > 0 && access.Port <= 65535 && access.Port != ftpPort;
    if (set && url.port() < 0) place.Port = static_cast<quint16>(access.Port);
    return place.Below(url.path(QUrl::FullyDecoded));
}

WebPlace WebPlace::OfAddress(const QByteArray& address) {
    const QUrl url = QUrl::fromEncoded(address);
    WebPlace place = OfUrl(url);
    place.Path = url.path(QUrl::FullyEncoded).toLatin1();
    if (!place.Path.startsWith('/')) place.Path.prepend('/');
    if (url.hasQuery()) place.Path += '?' + url.query(QUrl::FullyEncoded).toLatin1();
    return place;
}

WebPlace WebPlace::Below(const QString& folder) const {
    WebPlace place = *this;
    const QStringList parts = folder.split(u'/', Qt::SkipEmptyParts);
    for (const QString& part : parts) place.Path += PercentEncoded(part) + '/';
    return place;
}

bool WebPlace::SameServer(const WebPlace& other) const {
    return Secure == other.Secure && Host == other.Host && Port == other.Port;
}

QByteArray WebPlace::HostHeader() const {
    const QByteArray host = Host.section(u'%', 0, 0).toLatin1();
    const QByteArray name = host.contains(':') ? '[' + host + ']' : host;
    return Port == UsualPort(Secure) ? name : name + ':' + QByteArray::number(Port);
}

QByteArray WebPlace::Address(const QByteArray& path) const {
    return (Secure ? "https://" : "http://") + HostHeader() + path;
}

QByteArray PercentEncoded(const QString& text, const QByteArray& kept) {
    return QUrl::toPercentEncoding(text, kept);
}
