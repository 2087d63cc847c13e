#include "picture/bitmap/bitmap_file.h"

#include "fuzzer.h"
#include "small_picture.h"

#include <cstring>

namespace {

struct Pixels {
    explicit Pixels(const QByteArray& file, int bits) : bytes(file) {
        QBuffer buffer(&bytes);
        BitmapReader reader;
        if (!buffer.open(QIODevice::ReadOnly) || reader.Open(buffer) != ImagingDone) return;
        Known = true;
        // No program writes a compression with so large a number.
        MUST(bytes[14] == 12 || bytes[33] == 0);
        MUST(reader.Width() > 0 && reader.Height() > 0);
        const qint64 stride = BitmapStride(reader.Width(), bits);
        Read.fill('\xA5', stride * reader.Height());
        Whole = reader.ReadPixels({reinterpret_cast<uchar*>(Read.data()), stride}, bits) == 0;
    }
    QByteArray bytes;
    QByteArray Read;
    bool Known = false;
    bool Whole = false;
};

}  // namespace

const Fuzzer bitmap("bitmap", [](const QByteArray& bytes) {
    if (!IsQuick(bytes)) return;
    const Pixels all(bytes, 24);
    if (!all.Whole) return;
    // The same from a file with something behind it; nothing from one that lacks its end.
    const Pixels longer(bytes + QByteArray(64, 'x'), 24);
    MUST(!longer.Whole || longer.Read == all.Read);
    const Pixels half(bytes.left(54 + (bytes.size() - 54) / 2), 24);
    MUST(!half.Whole || half.Read == all.Read);
});
