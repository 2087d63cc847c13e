#include "net/ftp/listing.h"

#include "base/profile_file.h"
#include "net/ftp/ftp_text.h"

#include <algorithm>

namespace {

qint32 SizeColumn(const QString& line) {
    qsizetype at = 0;
    for (int column = 0; column < 4; ++column) {
        while (at < line.size() && line[at] != u' ') ++at;
        while (at < line.size() && line[at] == u' ') ++at;
    }
    return std::max(0, ValLong(line.mid(at)));
}

}  // namespace

qint32 SizeInListing(const QByteArray& listing, const QString& name) {
    qint32 size = 0;
    for (QByteArray bytes : listing.split('\n')) {
        if (bytes.endsWith('\r')) bytes.chop(1);
        const QString line = FromServer(bytes);
        if (!line.isEmpty() && line.mid(line.lastIndexOf(u' ') + 1) == name)
            size = SizeColumn(line);
    }
    return size;
}
