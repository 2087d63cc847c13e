#include "net/listing.h"

#include "base/profile_file.h"
#include "net/ftp_text.h"

#include <algorithm>

ListedFile ParseListingLine(const QString& line) {
    qsizetype at = 0;
    for (int column = 0; column < 4; ++column) {
        while (at < line.size() && line[at] != u' ') ++at;
        while (at < line.size() && line[at] == u' ') ++at;
    }
    return {line.mid(line.lastIndexOf(u' ') + 1), std::max(0, ValLong(line.mid(at)))};
}

qint32 SizeInListing(const QByteArray& listing, const QString& name) {
    qint32 size = 0;
    for (QByteArray line : listing.split('\n')) {
        if (line.endsWith('\r')) line.chop(1);
        const ListedFile file = ParseListingLine(FromServer(line));
        if (!line.isEmpty() && file.Name == name) size = file.Size;
    }
    return size;
}
