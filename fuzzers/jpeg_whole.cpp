#include "camera/whole_picture.h"

#include "fuzzer.h"
#include "picture/bitmap/jpeg_file.h"

// What counts as whole before it is decoded: everything that can be decoded without a complaint.
const Fuzzer jpegWhole("jpeg_whole", [](const QByteArray& bytes) {
    const auto isWhole = [](const QByteArray& some) {
        return JpegWhole(reinterpret_cast<const uchar*>(some.constData()), some.size());
    };
    const bool whole = isWhole(bytes);
    MUST(whole == isWhole(bytes + QByteArray(9, '\0')) || !whole);
    const qsizetype end = bytes.lastIndexOf("\xFF\xD9");
    if (whole) MUST(end > 0);
    for (const QSize box : {QSize(), QSize(8, 8)}) {
        const FilePicture read = ReadSmallJpeg(bytes, box);
        if (read.Fault == PictureFault::None) MUST(!read.Image.isNull() && whole);
    }
});
