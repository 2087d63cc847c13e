#include "picture/bitmap/picture_file.h"

#include "fuzzer.h"
#include "small_picture.h"

#include <QBuffer>

namespace {

FilePicture Read(QByteArray bytes) {
    QBuffer buffer(&bytes);
    static_cast<void>(buffer.open(QIODevice::ReadOnly));
    return ReadPicture(buffer, QSize(64, 48));
}

bool Fine(const FilePicture& picture) {
    const bool fine = picture.Fault == PictureFault::None;
    MUST(fine != picture.Image.isNull());
    const auto format = picture.Image.format();
    MUST(!fine || format == QImage::Format_BGR888 || format == QImage::Format_ARGB32);
    return fine;
}

}  // namespace

// Overlays, the offline picture, and what cameras give over HTTP.
const Fuzzer picture("picture", [](const QByteArray& bytes) {
    if (!IsQuick(bytes)) return;
    const FilePicture whole = Read(bytes);
    if (!Fine(whole)) return;
    MUST(OpaquePicture(whole.Image).format() == QImage::Format_BGR888);
    // Half a picture is none: what can be read of a part is all of it.
    for (const qsizetype length : {bytes.size() / 2, bytes.size() * 7 / 8, bytes.size() - 3}) {
        const FilePicture part = Read(bytes.left(length));
        if (Fine(part)) MUST(part.Image == whole.Image);
    }
});
