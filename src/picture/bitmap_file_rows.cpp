#include "picture/bitmap_file.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

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
    if (!file.seek(pixelOffset)) return ImagingCannotRead;
    if (bits == header.BitCount && step == stride) {
        char* const all = reinterpret_cast<char*>(first);
        return file.read(all, stride * Height()) == stride * Height() ? ImagingDone
                                                                      : ImagingCannotRead;
    }
    const int rowsAtOnce = static_cast<int>(std::max<qint64>(1, BitmapPiece / stride));
    std::vector<char> piece(static_cast<size_t>(rowsAtOnce * stride));
    for (int done = 0; done < Height();) {
        const int count = std::min(rowsAtOnce, Height() - done);
        if (file.read(piece.data(), count * stride) != count * stride) return ImagingCannotRead;
        for (int i = 0; i < count; ++i)
            ConvertRow(reinterpret_cast<const uchar*>(piece.data()) + i * stride,
                       first + (done + i) * step, bits);
        done += count;
    }
    return ImagingDone;
}

void BitmapReader::ConvertRow(const uchar* from, uchar* to, int bits) const {
    if (bits == header.BitCount) {
        const qint64 bytes = (qint64{Width()} * bits + 7) / 8;
        std::memcpy(to, from, static_cast<size_t>(bytes));
    } else if (header.BitCount <= 8) {
        ResolveIndexes(from, header.BitCount, Width(), palette, to);
    } else {
        ConvertPixels(from, to);
    }
}

void BitmapReader::ConvertPixels(const uchar* from, uchar* to) const {
    const int size = header.BitCount / 8;
    for (int x = 0; x < Width(); ++x, from += size) {
        const quint32 pixel =
            size == 2 ? qFromLittleEndian<quint16>(from) : qFromLittleEndian<quint32>(from);
        for (const Channel& channel : channels)
            *to++ = channel.Levels[(pixel & channel.Mask) >> channel.Shift];
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
