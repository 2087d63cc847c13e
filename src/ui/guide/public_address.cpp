#include "ui/guide/public_address.h"

#include "core/public_names.h"

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

}  // namespace

QString PublicAddress(const QString& server, const QString& folder) {
    if (server.isEmpty()) return {};
    const QStringList parts = folder.split(u'/', Qt::SkipEmptyParts);
    const bool web = server.contains("://");  // pictures are sent there as they are fetched
    QString address = (web ? server : WebServer(server)) + u'/';
    const QStringList folders = web ? parts : PublicFolders(parts);
    for (const QString& part : folders)
        address += QString::fromLatin1(QUrl::toPercentEncoding(part)) + u'/';
    return address + PublicNames::Picture;
}

QString LocalAddress(const QString& folder) {
    return QUrl::fromLocalFile(QDir(folder).filePath(PublicNames::Picture))
        .toString(QUrl::FullyEncoded);
}

QString ImageHtml(const QString& address) {
    return "<img src=\"" + address.toHtmlEscaped() + "\" alt=\"Webcam\">";
}
