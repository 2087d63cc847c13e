#include "picture/bitmap_file.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

constexpr int FileHeaderSize = 14;
constexpr quint32 CoreHeaderSize = 12;
constexpr quint32 InfoHeaderSize = 40;
constexpr quint32 Uncompressed = 0;
constexpr quint32 BitFields = 3;

template <class Number>
Number Get(const QByteArray& bytes, int offset) {
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

bool KnownHeader(quint32 size) {
    constexpr quint32 known[] = {CoreHeaderSize, InfoHeaderSize, 52, 56, 108, 124};
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

}  // namespace

int BitmapReader::Open(const QString& name) {
    file.setFileName(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return ImagingCannotRead;
    if (const int fault = ReadHeader()) return fault;
    if (const int fault = CheckHeader()) return fault;
    if (const int fault = ReadPalette()) return fault;
    return header.BitCount == 16 || header.BitCount == 32 ? ReadMasks() : ImagingDone;
}

int BitmapReader::ReadHeader() {
    const QByteArray bytes = file.read(FileHeaderSize + InfoHeaderSize);
    if (bytes.isEmpty()) return ImagingCannotRead;
    if (!bytes.startsWith("BM")) return ImagingNotABitmap;
    if (bytes.size() < FileHeaderSize + static_cast<int>(CoreHeaderSize)) return ImagingCannotRead;
    pixelOffset = Get<quint32>(bytes, 10);
    headerSize = Get<quint32>(bytes, 14);
    if (!KnownHeader(headerSize)) return ImagingUnsupported;
    if (headerSize == CoreHeaderSize) {
        header = ParseCoreHeader(bytes);
        return ImagingDone;
    }
    if (bytes.size() < FileHeaderSize + static_cast<int>(InfoHeaderSize)) return ImagingCannotRead;
    header = ParseInfoHeader(bytes);
    return ImagingDone;
}

int BitmapReader::CheckHeader() {
    constexpr int depths[] = {1, 4, 8, 16, 24, 32};
    if (std::find(std::begin(depths), std::end(depths), header.BitCount) == std::end(depths))
        return ImagingUnsupported;
    const bool masked = header.BitCount == 16 || header.BitCount == 32;
    if (header.Compression != Uncompressed && !(masked && header.Compression == BitFields))
        return ImagingUnsupported;
    // Compared without qAbs: the lowest number has no opposite.
    if (header.Planes != 1 || header.Width < 1 || header.Width > LongestBitmapSide ||
        header.Height == 0 || header.Height > LongestBitmapSide ||
        header.Height < -LongestBitmapSide)
        return ImagingDamaged;
    if (pixelOffset < FileHeaderSize + qint64{headerSize}) return ImagingDamaged;
    const qint64 pixels = BitmapStride(Width(), header.BitCount) * Height();
    return pixelOffset + pixels <= file.size() ? ImagingDone : ImagingCannotRead;
}

int BitmapReader::ReadPalette() {
    if (header.BitCount > 8) return ImagingDone;
    const quint32 most = 1U << header.BitCount;
    if (header.ColoursUsed > most) return ImagingDamaged;
    const qint64 count = header.ColoursUsed ? header.ColoursUsed : most;
    const qint64 entrySize = headerSize == CoreHeaderSize ? 3 : 4;
    const qint64 start = FileHeaderSize + headerSize;
    if (start + count * entrySize > pixelOffset) return ImagingDamaged;
    file.seek(start);
    const QByteArray bytes = file.read(count * entrySize);
    if (bytes.size() != count * entrySize) return ImagingCannotRead;
    for (qint64 i = 0; i < count; ++i)
        std::memcpy(&palette[static_cast<size_t>(i)], bytes.constData() + i * entrySize, 3);
    return ImagingDone;
}

int BitmapReader::ReadMasks() {
    std::array<quint32, 3> masks = {0x0000FF, 0x00FF00, 0xFF0000};  // blue, green, red
    if (header.BitCount == 16) masks = {0x001F, 0x03E0, 0x7C00};
    if (header.Compression == BitFields) {
        // They follow the 40 bytes in every header, be it longer or not.
        constexpr int start = FileHeaderSize + static_cast<int>(InfoHeaderSize);
        if (pixelOffset < start + 12) return ImagingDamaged;
        file.seek(start);
        const QByteArray bytes = file.read(12);
        if (bytes.size() != 12) return ImagingCannotRead;
        masks = {Get<quint32>(bytes, 8), Get<quint32>(bytes, 4), Get<quint32>(bytes, 0)};
        if (header.BitCount == 16 && ((masks[0] | masks[1] | masks[2]) >> 16))
            return ImagingDamaged;
    }
    for (size_t i = 0; i < masks.size(); ++i)
        if (!MakeChannel(masks[i], channels[i])) return ImagingDamaged;
    return ImagingDone;
}
