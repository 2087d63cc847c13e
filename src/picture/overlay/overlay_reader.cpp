#include "picture/overlay/overlay_reader.h"

#include <QDateTime>
#include <QFileInfo>

namespace {

// File systems count time in steps of up to two seconds. A file that changed just now may change
// again, in size and time just the same.
constexpr qint64 settlingMilliseconds = 4000;

}  // namespace

const FilePicture& OverlayReader::Read(const QString& path) {
    const QFileInfo info(path);
    Stamp now{path, info.size(), info.lastModified().toMSecsSinceEpoch()};
    if (settled && now == known && info.isFile()) return picture;
    settled = now.Modified + settlingMilliseconds < QDateTime::currentMSecsSinceEpoch();
    known = std::move(now);
    picture = ReadPicture(path);
    return picture;
}
