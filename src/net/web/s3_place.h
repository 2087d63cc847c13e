#pragma once

#include "net/web/web_place.h"

// Where a folder of object storage lies.
//
// The bucket stands in the path ("https://server/bucket/picture"), which nearly all storage
// understands; in front of the name ("https://bucket.server/picture") where the server is given
// so, or is one of those that want it (AWS, Alibaba, Tencent) and the bucket may be part of a name.
struct S3Place {
    WebPlace Bucket;
    WebPlace Folder;
    // That of the settings; else what the server's name tells ("s3.REGION.provider.com"); else
    // "us-east-1".
    QByteArray Region;

    [[nodiscard]] static S3Place Of(const ServerAccess& access);
    // From the root of the server.
    [[nodiscard]] QByteArray PathOf(const QString& name) const;
    // Percent-encoded, from the root of the bucket.
    [[nodiscard]] QByteArray KeyOf(const QString& name) const;
};
