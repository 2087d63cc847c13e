#include "net/web/web_place.h"

#include "net/server_access.h"

#include <QHostAddress>
#include <QUrl>

namespace {

constexpr int usualPort = 80;
constexpr int usualSecurePort = 443;
constexpr int ftpPort = 21;  // what the settings hold where nobody has set a port

quint16 UsualPort(bool secure) {
    return secure ? usualSecurePort : usualPort;
}

WebPlace OfUrl(const QUrl& url) {
    const bool secure = url.scheme() == QStringLiteral("https");
    if (!url.isValid() || (!secure && url.scheme() != QStringLiteral("http"))) return {};
    return {.Secure = secure,
            .Host = url.host(QUrl::FullyEncoded).remove(u'[').remove(u']'),
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
    const QByteArray host = Host.toLatin1();
    const QByteArray name = host.contains(':') ? '[' + host + ']' : host;
    return Port == UsualPort(Secure) ? name : name + ':' + QByteArray::number(Port);
}

QByteArray WebPlace::Address(const QByteArray& path) const {
    return (Secure ? "https://" : "http://") + HostHeader() + path;
}

QByteArray PercentEncoded(const QString& text, const QByteArray& kept) {
    return QUrl::toPercentEncoding(text, kept);
}
