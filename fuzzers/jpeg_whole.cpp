#include "camera/whole_picture.h"

#include "fuzzer.h"
#include "picture/bitmap/jpeg_file.h"
#include "picture/bitmap/jpeg_header.h"

#include <QtEndian>

namespace {

// Whether it ends with the segment that the pixels follow.
bool IsScan(const QByteArray& bytes) {
    for (qsizetype at = bytes.size() - 4; at >= 0; --at) {
        const auto length = qFromBigEndian<quint16>(bytes.constData() + at + 2);
        if (bytes.mid(at, 2) == "\xFF\xDA" && at + 2 + length == bytes.size()) return true;
    }
    return false;
}

}  // namespace

// What counts as whole before it is decoded: everything that can be decoded without a complaint.
const Fuzzer jpegWhole("jpeg_whole", [](const QByteArray& bytes) {
    const auto isWhole = [](const QByteArray& some) {
        return JpegWhole(reinterpret_cast<const uchar*>(some.constData()), some.size());
    };
    const bool whole = isWhole(bytes);
    MUST(whole == isWhole(bytes + QByteArray(9, '\0')) || !whole);
    const qsizetype end = bytes.lastIndexOf("\xFF\xD9");
    if (whole) MUST(end > 0 && bytes.contains("\xFF\xDA"));
    const JpegHeader header = ReadJpegHeader(bytes);
    MUST(header.Orientation >= 1 && header.Orientation <= 8);
    if (header.Pixels > 0) MUST(IsScan(bytes.first(header.Pixels)));
    for (const QSize box : {QSize(), QSize(8, 8)}) {
        const FilePicture read = ReadSmallJpeg(bytes, box);
        if (read.Fault == PictureFault::None) MUST(!read.Image.isNull() && whole);
    }
});
