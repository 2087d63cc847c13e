#include "picture/bitmap/bitmap_file.h"

#include "base/whole_file.h"
#include "picture/bitmap/bitmap_runs.h"
#include "platform/file_use.h"
#include "platform/row_writer.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace {

constexpr int fileHeaderSize = 14;
constexpr quint32 coreHeaderSize = 12;
constexpr quint32 infoHeaderSize = 40;
constexpr quint32 alphaHeaderSize = 56;  // and longer: with a mask of its own
constexpr quint32 os2HeaderSize = 64;    // but for this one, with other things in these places
constexpr quint32 headersSize = fileHeaderSize + infoHeaderSize;
constexpr quint32 uncompressed = 0;
constexpr quint32 runsOf8 = 1;
constexpr quint32 runsOf4 = 2;
constexpr quint32 bitFields = 3;
constexpr quint32 alphaBitFields = 6;

template <class Number>
Number Get(const QByteArray& bytes, int offset) {
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

bool KnownHeader(quint32 size) {
    constexpr quint32 known[] = {
        coreHeaderSize, infoHeaderSize, 52, alphaHeaderSize, os2HeaderSize, 108, 124};
    return std::find(std::begin(known), std::end(known), size) != std::end(known);
}

BITMAPINFOHEADER ParseCoreHeader(const QByteArray& bytes) {
    BITMAPINFOHEADER header;
    header.Width = Get<quint16>(bytes, 18);
    header.Height = Get<quint16>(bytes, 20);
    header.Planes = Get<quint16>(bytes, 22);
    header.BitCount = Get<quint16>(bytes, 24);
    return header;
}

BITMAPINFOHEADER ParseInfoHeader(const QByteArray& bytes) {
    BITMAPINFOHEADER header;
    header.Width = Get<qint32>(bytes, 18);
    header.Height = Get<qint32>(bytes, 22);
    header.Planes = Get<quint16>(bytes, 26);
    header.BitCount = Get<quint16>(bytes, 28);
    header.Compression = Get<quint32>(bytes, 30);
    header.ImageSize = Get<quint32>(bytes, 34);
    header.XPelsPerMeter = Get<qint32>(bytes, 38);
    header.YPelsPerMeter = Get<qint32>(bytes, 42);
    header.ColoursUsed = Get<quint32>(bytes, 46);
    header.ColoursImportant = Get<quint32>(bytes, 50);
    return header;
}

template <class Number>
void Put(uchar* bytes, int offset, Number value) {
    qToLittleEndian<Number>(value, bytes + offset);
}

bool WriteAll(QFile& file, const uchar* bytes, qint64 count) {
    return file.write(reinterpret_cast<const char*>(bytes), count) == count;
}

bool WriteHeaders(QFile& file, const BITMAPINFOHEADER& header) {
    uchar head[headersSize] = {'B', 'M'};
    Put<quint32>(head, 2, headersSize + header.ImageSize);
    Put<quint32>(head, 10, headersSize);
    Put<quint32>(head, 14, header.Size);
    Put<qint32>(head, 18, header.Width);
    Put<qint32>(head, 22, header.Height);
    Put<quint16>(head, 26, header.Planes);
    Put<quint16>(head, 28, header.BitCount);
    Put<quint32>(head, 34, header.ImageSize);
    return WriteAll(file, head, headersSize);
}

bool WritePart(QFile& file, const BITMAPINFOHEADER& header, const BitmapRows& rows,
               const BitmapPart& part) {
    const qint64 stride = BitmapStride(header.Width, header.BitCount);
    const qint64 bytes = qint64{header.Width} * 3;
    // The lowest row first.
    const int last = part.First + part.Count - 1;
    return file.seek(headersSize + stride * (header.Height - 1 - last)) &&
           WriteRows(file, {.First = rows.Top + last * rows.Step,
                            .Step = -rows.Step,
                            .Count = part.Count,
                            .Bytes = bytes,
                            .Padding = stride - bytes});
}

}  // namespace

int BitmapReader::Open(const QString& name) {
    file.setFileName(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return ImagingCannotRead;
    return Open(file);
}

int BitmapReader::Open(QIODevice& device) {
    source = &device;
    if (const int fault = ReadHeader()) return fault;
    if (const int fault = CheckHeader()) return fault;
    if (const int fault = ReadPalette()) return fault;
    if (HasRuns()) return ReadRuns();
    return header.BitCount == 16 || header.BitCount == 32 ? ReadMasks() : ImagingDone;
}

int BitmapReader::ReadHeader() {
    const QByteArray bytes = source->read(fileHeaderSize + infoHeaderSize);
    if (bytes.isEmpty()) return ImagingCannotRead;
    if (!bytes.startsWith("BM")) return ImagingNotABitmap;
    if (bytes.size() < fileHeaderSize + static_cast<int>(coreHeaderSize)) return ImagingCannotRead;
    pixelOffset = Get<quint32>(bytes, 10);
    headerSize = Get<quint32>(bytes, 14);
    if (!KnownHeader(headerSize)) return ImagingUnsupported;
    if (headerSize == coreHeaderSize) {
        header = ParseCoreHeader(bytes);
        return ImagingDone;
    }
    if (bytes.size() < fileHeaderSize + static_cast<int>(infoHeaderSize)) return ImagingCannotRead;
    header = ParseInfoHeader(bytes);
    return ImagingDone;
}

int BitmapReader::CheckHeader() {
    constexpr int depths[] = {1, 4, 8, 16, 24, 32};
    if (std::find(std::begin(depths), std::end(depths), header.BitCount) == std::end(depths))
        return ImagingUnsupported;
    const bool masked = header.BitCount == 16 || header.BitCount == 32;
    const bool fields = header.Compression == bitFields || header.Compression == alphaBitFields;
    if (header.Compression != uncompressed && !HasRuns() &&
        !(masked && fields && headerSize != os2HeaderSize))
        return ImagingUnsupported;
    // Compared without qAbs: the lowest number has no opposite.
    if (header.Planes != 1 || header.Width < 1 || header.Width > LongestBitmapSide ||
        header.Height == 0 || header.Height > LongestBitmapSide ||
        header.Height < -LongestBitmapSide)
        return ImagingDamaged;
    if (pixelOffset < fileHeaderSize + qint64{headerSize}) return ImagingDamaged;
    if (HasRuns()) {
        const qint64 most = std::min(MostBitmapPixels, MostPixelsIn(source->size()));
        const bool fits = header.Height > 0 && qint64{Width()} * Height() <= most;
        return fits ? ImagingDone : ImagingDamaged;
    }
    const qint64 pixels = BitmapStride(Width(), header.BitCount) * Height();
    return pixelOffset + pixels <= source->size() ? ImagingDone : ImagingCannotRead;
}

bool BitmapReader::HasRuns() const {
    return (header.BitCount == 8 && header.Compression == runsOf8) ||
           (header.BitCount == 4 && header.Compression == runsOf4);
}

// From here on it is a bitmap of 8 bits like any other.
int BitmapReader::ReadRuns() {
    if (!source->seek(pixelOffset)) return ImagingCannotRead;
    const qint64 size = std::clamp<qint64>(source->size() - pixelOffset, 0, MostBitmapPixels);
    const auto rows = DecodeRuns(source->read(size), header.BitCount, {Width(), Height()});
    if (!rows) return ImagingCannotRead;
    unpacked.setData(*rows);
    unpacked.open(QIODevice::ReadOnly);
    source = &unpacked;
    pixelOffset = 0;
    header.BitCount = 8;
    header.Compression = uncompressed;
    return ImagingDone;
}

int BitmapReader::ReadPalette() {
    if (header.BitCount > 8) return ImagingDone;
    const quint32 most = 1U << header.BitCount;
    if (header.ColoursUsed > most) return ImagingDamaged;
    const qint64 count = header.ColoursUsed ? header.ColoursUsed : most;
    const qint64 entrySize = headerSize == coreHeaderSize ? 3 : 4;
    const qint64 start = fileHeaderSize + headerSize;
    if (start + count * entrySize > pixelOffset) return ImagingDamaged;
    source->seek(start);
    const QByteArray bytes = source->read(count * entrySize);
    if (bytes.size() != count * entrySize) return ImagingCannotRead;
    for (qint64 i = 0; i < count; ++i)
        std::memcpy(&palette[static_cast<size_t>(i)], bytes.constData() + i * entrySize, 3);
    return ImagingDone;
}

int BitmapReader::ReadMasks() {
    std::array<quint32, 4> masks = {0x0000FF, 0x00FF00, 0xFF0000, 0};  // blue, green, red, alpha
    if (header.BitCount == 16) masks = {0x001F, 0x03E0, 0x7C00, 0};
    const bool fields = header.Compression != uncompressed;
    const bool withAlpha = header.Compression == alphaBitFields ||
                           (headerSize >= alphaHeaderSize && headerSize != os2HeaderSize);
    if (fields || withAlpha) {
        // They follow the 40 bytes in every header, be it longer or not.
        constexpr int start = fileHeaderSize + static_cast<int>(infoHeaderSize);
        const int size = withAlpha ? 16 : 12;
        if (pixelOffset < start + size) return ImagingDamaged;
        source->seek(start);
        const QByteArray bytes = source->read(size);
        if (bytes.size() != size) return ImagingCannotRead;
        if (fields)
            masks = {Get<quint32>(bytes, 8), Get<quint32>(bytes, 4), Get<quint32>(bytes, 0), 0};
        if (withAlpha) masks[3] = Get<quint32>(bytes, 12);
    }
    const quint32 colours = masks[0] | masks[1] | masks[2];
    if (header.BitCount == 16 && colours >> 16) return ImagingDamaged;
    for (size_t i = 0; i < 3; ++i)
        if (!MakeChannel(masks[i], channels[i])) return ImagingDamaged;
    // A mask for alpha that cannot be true costs the transparency, not the picture.
    const bool apart = !(masks[3] & colours) && (header.BitCount == 32 || !(masks[3] >> 16));
    if (!apart || !MakeChannel(masks[3], channels[3])) channels[3] = {};
    return ImagingDone;
}

bool BitmapReader::MakeChannel(quint32 mask, Channel& channel) {
    if (mask == 0) return false;
    channel.Shift = std::countr_zero(mask);
    const int width = std::popcount(mask);
    if ((mask >> channel.Shift) != (width == 32 ? ~0U : (1U << width) - 1)) return false;
    channel.Mask = mask;
    // Of a wider channel the upper eight bits count.
    const int used = std::min(width, 8);
    channel.Shift += width - used;
    const int highest = (1 << used) - 1;
    for (int level = 0; level <= highest; ++level)
        channel.Levels[static_cast<size_t>(level)] =
            static_cast<uchar>((level * 255 + highest / 2) / highest);
    return true;
}

int BitmapReader::ReadPixels(const BitmapRows& rows, int bits) {
    const qint64 stride = BitmapStride(Width(), header.BitCount);
    const bool topDown = header.Height < 0;
    const qptrdiff step = topDown ? rows.Step : -rows.Step;  // in the order of the file
    uchar* const first = topDown ? rows.Top : rows.Top + (Height() - 1) * rows.Step;
    if (!source->seek(pixelOffset)) return ImagingCannotRead;
    if (bits == header.BitCount && bits < 32 && step == stride) {
        char* const all = reinterpret_cast<char*>(first);
        return source->read(all, stride * Height()) == stride * Height() ? ImagingDone
                                                                         : ImagingCannotRead;
    }
    const int rowsAtOnce = static_cast<int>(std::clamp<qint64>(BitmapPiece / stride, 1, Height()));
    std::vector<char> piece(static_cast<size_t>(rowsAtOnce * stride));
    for (int done = 0; done < Height();) {
        const int count = std::min(rowsAtOnce, Height() - done);
        if (source->read(piece.data(), count * stride) != count * stride) return ImagingCannotRead;
        for (int i = 0; i < count; ++i)
            ConvertRow(reinterpret_cast<const uchar*>(piece.data()) + i * stride,
                       first + (done + i) * step, bits);
        done += count;
    }
    return ImagingDone;
}

void BitmapReader::ConvertRow(const uchar* from, uchar* to, int bits) const {
    if (bits == header.BitCount && bits < 32) {
        const qint64 bytes = (qint64{Width()} * bits + 7) / 8;
        std::memcpy(to, from, static_cast<size_t>(bytes));
    } else if (header.BitCount <= 8) {
        ResolveIndexes(from, header.BitCount, Width(), palette, to);
    } else {
        ConvertPixels(from, to, bits);
    }
}

void BitmapReader::ConvertPixels(const uchar* from, uchar* to, int bits) const {
    const int size = header.BitCount / 8;
    const auto wanted = static_cast<size_t>(bits / 8);
    for (int x = 0; x < Width(); ++x, from += size) {
        const quint32 pixel =
            size == 2 ? qFromLittleEndian<quint16>(from) : qFromLittleEndian<quint32>(from);
        for (size_t i = 0; i < wanted; ++i)
            *to++ = channels[i].Levels[(pixel & channels[i].Mask) >> channels[i].Shift];
    }
}

void ResolveIndexes(const uchar* from, int bits, int width, const BitmapPalette& palette,
                    uchar* to) {
    const int perByte = 8 / bits;
    const int mask = (1 << bits) - 1;
    for (int x = 0; x < width; ++x, to += 3) {
        const int shift = 8 - bits * (x % perByte + 1);
        const int index = (from[x / perByte] >> shift) & mask;
        std::memcpy(to, &palette[static_cast<size_t>(index)], 3);
    }
}

BITMAPINFOHEADER BitmapHeader(int width, int height) {
    return {.Width = width,
            .Height = height,
            .BitCount = 24,
            .ImageSize = static_cast<quint32>(BitmapStride(width, 24) * height)};
}

int WriteBitmap(const QString& name, int width, int height, const BitmapRows& rows) {
    return RewriteBitmap(name, width, height, rows, {{0, height}});
}

int RewriteBitmap(const QString& name, int width, int height, const BitmapRows& rows,
                  const QList<BitmapPart>& parts) {
    const BITMAPINFOHEADER header = BitmapHeader(width, height);
    const qint64 size = headersSize + qint64{header.ImageSize};
    const auto write = [&](QFile& file) {
        // Another file than was meant, or none.
        const bool all = file.size() != size;
        if (file.size() > size && !file.resize(size)) return false;
        const QList<BitmapPart> written = all ? QList<BitmapPart>{{0, height}} : parts;
        return WriteHeaders(file, header) &&
               std::ranges::all_of(written, [&](const BitmapPart& part) {
                   return WritePart(file, header, rows, part);
               });
    };
    return WholeFile::Replace(name, write, OnlyUser) ? ImagingDone : ImagingCannotWrite;
}
