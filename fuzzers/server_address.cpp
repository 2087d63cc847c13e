#include "base/server_address.h"

#include "fuzzer.h"

#include <QUrl>

namespace {

QString Encoded(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

// As somebody would write it who spares no sign.
QString Written(const ServerAddress& address) {
    const QString scheme = address.Protocol == u"ftpsi" ? QString("ftps") : address.Protocol;
    QString text = scheme.isEmpty() ? QString() : scheme + "://";
    if (!address.User.isEmpty() || !address.Password.isEmpty())
        text += Encoded(address.User) + u':' + Encoded(address.Password) + u'@';
    text += address.Host.contains(u':') ? u'[' + address.Host + u']' : address.Host;
    if (address.Port != 0) text += u':' + QString::number(address.Port);
    if (!address.Path.isEmpty()) text += u'/' + Encoded(address.Path);
    return address.Path.size() > 1 && address.Path.endsWith(u'/') ? text + u'/' : text;
}

}  // namespace

const Fuzzer serverAddress("server_address", [](const QByteArray& bytes) {
    const ServerAddress address = ServerAddress::Of(QString::fromUtf8(bytes));
    if (address.Is != ServerAddress::Fault::None) return;
    MUST(!address.Host.isEmpty() && address.Port >= 0 && address.Port <= 65535);
    const ServerAddress again = ServerAddress::Of(Written(address));
    MUST(again.Is == address.Is && again.Protocol == address.Protocol);
    MUST(again.Host == address.Host && again.Port == address.Port);
    MUST(again.User == address.User && again.Password == address.Password);
    MUST(again.Path == address.Path);
    const QString host = address.Host.contains(u':') ? u'[' + address.Host + u']' : address.Host;
    for (const char* const port : {":0", ":65536", ":x"})
        MUST(ServerAddress::Of(host + QString::fromLatin1(port)).Is == ServerAddress::Fault::Port);
    for (const char* const way : {"ftp", "https", "s3"}) {
        const QString setting = QString::fromLatin1(way);
        if (!address.Fits(setting)) continue;
        const ServerAddress server = ServerAddress::Of(address.ServerFor(setting));
        MUST(server.Is == ServerAddress::Fault::None && server.Host == address.Host);
    }
});
