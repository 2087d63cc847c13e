#include "net/web/web_place.h"

#include "fuzzer.h"
#include "net/server_access.h"
#include "net/web/s3_place.h"

namespace {

void Check(const WebPlace& place) {
    if (place.Host.isEmpty()) return;
    for (const QByteArray& said : {place.HostHeader(), place.Path})
        for (const char each : said) MUST(each > ' ' && each < '\x7f');
    MUST(place.Path.startsWith('/'));
    const WebPlace again = WebPlace::OfAddress(place.Address(place.Path));
    MUST(again.Secure == place.Secure && again.HostHeader() == place.HostHeader());
    MUST(again.Path == place.Path);
}

}  // namespace

// Server, folder and bucket as the operator writes them, then an address that a server gives.
const Fuzzer webPlace("web_place", [](const QByteArray& bytes) {
    const QByteArrayList parts = Parts(bytes, 4);
    const ServerAccess access{.Way = Protocol::S3,
                              .Server = QString::fromUtf8(parts[0]),
                              .Folder = QString::fromUtf8(parts[1]),
                              .Bucket = QString::fromUtf8(parts[2])};
    Check(WebPlace::Of(access).Below(access.Folder));
    const S3Place storage = S3Place::Of(access);
    Check(storage.Bucket);
    Check(storage.Folder);
    Check(WebPlace::OfAddress(parts[3]));
});
