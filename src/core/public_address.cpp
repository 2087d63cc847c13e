#include "core/public_address.h"

#include "net/server_access.h"
#include "net/web/s3_place.h"

#include <QDir>
#include <QHostAddress>
#include <QStringList>
#include <QUrl>

namespace {

// What stands for the beginning of the web site.
const QStringList webRoots{"public_html", "htdocs",  "httpdocs", "html",  "www",
                           "web",         "wwwroot", "public",   "httpd", "site"};

// "ftp.example.com" has its pages at www.example.com; a machine without such a name has them
// itself.
QString WebServer(const QString& server) {
    const QString name = server.toLower();
    if (QHostAddress address; address.setAddress(name))
        return "http://" + (name.contains(u':') ? u'[' + name + u']' : name);
    if (!name.contains(u'.')) return "http://" + name;
    if (name.startsWith(u"ftp.")) return "https://www." + name.sliced(4);
    return "https://" + name;
}

// Behind the last folder that is the beginning of a web site: "domains/a.org/htdocs/cam" is "cam".
QStringList PublicFolders(const QStringList& parts) {
    for (qsizetype i = parts.size(); i > 0; --i)
        if (webRoots.contains(parts[i - 1].toLower())) return parts.sliced(i);
    return parts;
}

// Where it is sent to is where it is fetched from.
QString AddressIn(const WebPlace& folder, const QString& file) {
    const QByteArray path = folder.Path + PercentEncoded(file);
    return folder.Host.isEmpty() ? QString() : QString::fromLatin1(folder.Address(path));
}

}  // namespace

QString PublicAddress(const ServerAccess& access, const QString& file) {
    using enum Protocol;
    if (access.Server.isEmpty()) return {};
    if (access.Way == Http || access.Way == Https)
        return AddressIn(WebPlace::Of(access).Below(access.Folder), file);
    if (access.Way == S3) return AddressIn(S3Place::Of(access).Folder, file);
    QString address = WebServer(access.Server) + u'/';
    const QStringList folders = PublicFolders(access.Folder.split(u'/', Qt::SkipEmptyParts));
    for (const QString& part : folders)
        address += QString::fromLatin1(QUrl::toPercentEncoding(part)) + u'/';
    return address + QString::fromLatin1(QUrl::toPercentEncoding(file));
}

QString LocalAddress(const QString& folder) {
    return QUrl::fromLocalFile(QDir(folder).filePath(PublicNames::Picture))
        .toString(QUrl::FullyEncoded);
}

QString ImageHtml(const QString& address) {
    return "<img src=\"" + address.toHtmlEscaped() + "\" alt=\"Webcam\">";
}
