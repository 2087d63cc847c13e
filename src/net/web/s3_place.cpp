#include "net/web/s3_place.h"

#include "net/server_access.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

bool WantsBucketInName(const QString& host) {
    static const auto providers = std::to_array<QString>(
        {QStringLiteral(".amazonaws.com"), QStringLiteral(".amazonaws.com.cn"),
         QStringLiteral(".aliyuncs.com"), QStringLiteral(".myqcloud.com")});
    return std::any_of(providers.begin(), providers.end(),
                       [&host](const QString& provider) { return host.endsWith(provider); });
}

// Certificates cover one name in front of the server's, so none with a point in it.
bool MayBePartOfName(const QString& bucket) {
    static const QRegularExpression form(QStringLiteral("^[a-z0-9][a-z0-9-]{1,61}[a-z0-9]$"));
    return form.match(bucket).hasMatch();
}

// In the server's name where its provider wants that and it is a name then, else in the path.
WebPlace WithBucket(const WebPlace& server, const QString& bucket) {
    if (server.Host.startsWith(bucket + u'.')) return server;
    if (!WantsBucketInName(server.Host) || !MayBePartOfName(bucket)) return server.Below(bucket);
    WebPlace named = server;
    named.Host.prepend(bucket + u'.');
    // What "xn--zca1" stands for is encoded otherwise: the address would name another server.
    const WebPlace read = WebPlace::OfAddress(named.Address(named.Path));
    return read.SameServer(named) ? named : server.Below(bucket);
}

QString RegionOf(const QString& host) {
    static const QRegularExpression form(
        QStringLiteral("(?:^|\\.)s3[.-]([a-z0-9-]+)(?:\\.[a-z0-9-]+){2,}$"));
    const QRegularExpressionMatch match = form.match(host);
    return match.hasMatch() ? match.captured(1) : QStringLiteral("us-east-1");
}

}  // namespace

S3Place S3Place::Of(const ServerAccess& access) {
    const QString bucket = access.Bucket.trimmed();
    const QString region = access.Region.trimmed();
    const WebPlace server = WebPlace::Of(access);
    const WebPlace place = WithBucket(server, bucket);
    return {.Bucket = place,
            .Folder = place.Below(access.Folder),
            .Region = region.isEmpty() ? RegionOf(server.Host).toLatin1() : region.toUtf8()};
}

QByteArray S3Place::PathOf(const QString& name) const {
    return Folder.Path + PercentEncoded(name);
}

QByteArray S3Place::KeyOf(const QString& name) const {
    return PathOf(name).mid(Bucket.Path.size());
}
