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
    S3Place place{.Bucket = WebPlace::Of(access), .Folder = {}, .Region = region.toUtf8()};
    QString& host = place.Bucket.Host;
    if (region.isEmpty()) place.Region = RegionOf(host).toLatin1();
    if (!host.startsWith(bucket + u'.')) {
        if (WantsBucketInName(host) && MayBePartOfName(bucket))
            host.prepend(bucket + u'.');
        else
            place.Bucket = place.Bucket.Below(bucket);
    }
    place.Folder = place.Bucket.Below(access.Folder);
    return place;
}

QByteArray S3Place::PathOf(const QString& name) const {
    return Folder.Path + PercentEncoded(name);
}

QByteArray S3Place::KeyOf(const QString& name) const {
    return PathOf(name).mid(Bucket.Path.size());
}
