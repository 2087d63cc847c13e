#include "base/server_address.h"

#include <QMap>
#include <QRegularExpression>
#include <QUrl>

namespace {

constexpr int mostPort = 65535;

// What has a sign of per cent without being encoded stays as it is.
QString Decoded(const QString& text) {
    static const QRegularExpression plainSign("%(?![0-9A-Fa-f]{2})");
    return text.contains(plainSign) ? text : QUrl::fromPercentEncoding(text.toUtf8());
}

// An address without brackets has no port behind it.
bool IsBareIpv6(const QString& text) {
    static const QRegularExpression form("^[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*(%.+)?$");
    return text.contains(form);
}

bool IsHost(const QString& host) {
    static const QRegularExpression impossible(R"([\s/\\@\[\]\x00-\x20\x7f])");
    return !host.isEmpty() && !host.contains(impossible) && host != u"Local" && host != u"local" &&
           (!host.contains(u':') || IsBareIpv6(host));
}

ServerAddress::Fault ReadPort(const QString& text, int& port) {
    if (text.isEmpty()) return ServerAddress::Fault::None;
    bool numeric = false;
    const uint number = text.toUInt(&numeric);
    if (!numeric || number < 1 || number > mostPort) return ServerAddress::Fault::Port;
    port = static_cast<int>(number);
    return ServerAddress::Fault::None;
}

// host, host:port or [address]:port.
void ReadHost(const QString& text, ServerAddress& address) {
    const qsizetype bracket = text.startsWith(u'[') ? text.indexOf(u']') : -1;
    const qsizetype colon = IsBareIpv6(text) ? -1 : text.indexOf(u':', bracket + 1);
    const QString host = text.left(colon);
    address.Host = bracket > 0 && bracket == host.size() - 1 ? host.mid(1, bracket - 1) : host;
    address.Is = IsHost(address.Host)
                     ? ReadPort(colon < 0 ? QString() : text.mid(colon + 1), address.Port)
                     : ServerAddress::Fault::Host;
}

void ReadUser(const QString& text, ServerAddress& address) {
    const qsizetype colon = text.indexOf(u':');
    address.User = Decoded(text.left(colon));
    if (colon >= 0) address.Password = Decoded(text.mid(colon + 1));
}

// What an address begins with, and the setting that it stands for.
QString ProtocolOf(const QString& scheme) {
    static const QMap<QString, QString> known{{"ftp", "ftp"},    {"ftps", "ftps"},
                                              {"ftpes", "ftps"}, {"sftp", "sftp"},
                                              {"http", "http"},  {"https", "https"}};
    return known.value(scheme.toLower());
}

bool IsOfTheWeb(const QString& protocol) {
    return protocol == u"http" || protocol == u"https" || protocol == u"s3";
}

}  // namespace

bool ServerAddress::Fits(const QString& setting) const {
    if (Protocol.isEmpty() || Protocol == setting) return true;
    if (setting == u"s3") return Protocol == u"http" || Protocol == u"https";
    return Protocol == u"ftp" && (setting == u"ftps" || setting == u"ftpsi");
}

QString ServerAddress::ServerFor(const QString& setting) const {
    if (!IsOfTheWeb(setting)) return Host;
    const QString host = Host.contains(u':') ? u'[' + Host + u']' : Host;
    const QString scheme = Protocol.isEmpty() ? QString() : Protocol + "://";
    return scheme + host + (Port == 0 ? QString() : u':' + QString::number(Port));
}

ServerAddress ServerAddress::Of(const QString& text) {
    const QString marker = "://";
    ServerAddress address;
    QString rest = text.trimmed();
    if (const qsizetype end = rest.indexOf(marker); end >= 0) {
        address.Protocol = ProtocolOf(rest.left(end));
        if (address.Protocol.isEmpty()) address.Is = Fault::Protocol;
        rest = rest.mid(end + marker.size());
    }
    if (address.Is != Fault::None) return address;
    const qsizetype slash = rest.indexOf(u'/');
    const QString server = rest.left(slash);
    const qsizetype at = server.lastIndexOf(u'@');
    if (at >= 0) ReadUser(server.left(at), address);
    ReadHost(server.mid(at + 1), address);
    constexpr int encryptedFromTheStart = 990;
    if (address.Protocol == u"ftps" && address.Port == encryptedFromTheStart)
        address.Protocol = "ftpsi";
    if (slash >= 0) address.Path = Decoded(rest.mid(slash + 1));
    if (address.Path.size() > 1 && address.Path.endsWith(u'/')) address.Path.chop(1);
    return address;
}
