#include "base/whole_file.h"
#include "picture/bitmap_file.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr quint32 InfoHeaderSize = 40;
constexpr quint32 HeadersSize = 14 + InfoHeaderSize;

template <class Number>
void Put(uchar* bytes, int offset, Number value) {
    qToLittleEndian<Number>(value, bytes + offset);
}

bool WriteAll(QFile& file, const uchar* bytes, qint64 count) {
    return file.write(reinterpret_cast<const char*>(bytes), count) == count;
}

bool WriteHeaders(QFile& file, int width, int height) {
    const auto pixels = static_cast<quint32>(BitmapStride(width, 24) * height);
    uchar head[HeadersSize] = {'B', 'M'};
    Put<quint32>(head, 2, HeadersSize + pixels);
    Put<quint32>(head, 10, HeadersSize);
    Put<quint32>(head, 14, InfoHeaderSize);
    Put<qint32>(head, 18, width);
    Put<qint32>(head, 22, height);
    Put<quint16>(head, 26, 1);
    Put<quint16>(head, 28, 24);
    Put<quint32>(head, 34, pixels);
    return WriteAll(file, head, HeadersSize);
}

bool WriteRows(QFile& file, int width, int height, const BitmapRows& rows) {
    const qint64 stride = BitmapStride(width, 24);
    const uchar* bottom = rows.Top + (height - 1) * rows.Step;
    if (rows.Step == -stride) return WriteAll(file, bottom, stride * height);
    const int rowsAtOnce = static_cast<int>(std::max<qint64>(1, BitmapPiece / stride));
    std::vector<uchar> piece(static_cast<size_t>(rowsAtOnce * stride));
    for (int done = 0; done < height;) {
        const int count = std::min(rowsAtOnce, height - done);
        for (int i = 0; i < count; ++i)
            std::memcpy(piece.data() + i * stride, bottom - (done + i) * rows.Step,
                        static_cast<size_t>(width) * 3);
        if (!WriteAll(file, piece.data(), count * stride)) return false;
        done += count;
    }
    return true;
}

}  // namespace

int WriteBitmap(const QString& name, int width, int height, const BitmapRows& rows) {
    const bool written = WholeFile::Replace(name, [&](QFile& file) {
        return WriteHeaders(file, width, height) && WriteRows(file, width, height, rows);
    });
    return written ? ImagingDone : ImagingCannotWrite;
}
