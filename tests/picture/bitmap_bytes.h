#pragma once

#include "support/file_bytes.h"

#include <QColor>

#include <array>

// A bitmap file put together by hand, with its own idea of what each pixel looks like.
struct BitmapShape {
    int Bits = 24;
    int Width = 5;
    int Height = 3;
    bool TopDown = false;
    int HeaderSize = 40;
    std::array<quint32, 3> Masks = {};  // red, green, blue; none: no bit fields

    [[nodiscard]] int Colours() const { return Bits <= 8 ? 1 << Bits : 0; }
    [[nodiscard]] bool Masked() const { return Masks[0] != 0; }

    // The number stored for a pixel; y from the top.
    [[nodiscard]] quint32 Raw(int x, int y) const {
        const auto value = static_cast<quint32>(x * 40503 + y * 2654435 + x * y * 977);
        return Bits == 32 ? value * 2654435761U : value % (1U << Bits);
    }

    [[nodiscard]] QColor PaletteColour(quint32 index) const {
        const int i = static_cast<int>(index);
        return QColor((i * 53 + 7) % 256, 255 - i * 11 % 256, i * 37 % 256);
    }

    // What the pixel looks like, each channel widened to the nearest of 256 levels.
    [[nodiscard]] QColor Colour(int x, int y) const {
        const quint32 raw = Raw(x, y);
        if (Bits <= 8) return PaletteColour(raw);
        if (Masked()) return Fields(raw, Masks);
        if (Bits == 16) return Fields(raw, {0x7C00, 0x03E0, 0x001F});
        return Fields(raw, {0xFF0000, 0x00FF00, 0x0000FF});
    }

    [[nodiscard]] QByteArray Bytes() const {
        const bool core = HeaderSize == 12;
        QByteArray palette;
        for (quint32 i = 0; i < static_cast<quint32>(Colours()); ++i) {
            const QColor colour = PaletteColour(i);
            palette += static_cast<char>(colour.blue());
            palette += static_cast<char>(colour.green());
            palette += static_cast<char>(colour.red());
            if (!core) palette += '\xFF';
        }
        QByteArray header(HeaderSize, '\0');
        Put(header, 0, HeaderSize, 4);
        Put(header, 4, Width, core ? 2 : 4);
        Put(header, core ? 6 : 8, TopDown ? -Height : Height, core ? 2 : 4);
        Put(header, core ? 8 : 12, 1, 2);
        Put(header, core ? 10 : 14, Bits, 2);
        if (Masked()) Put(header, 16, 3, 4);
        if (Masked() && HeaderSize < 52) header.resize(52);
        for (int i = 0; Masked() && i < 3; ++i)
            Put(header, 40 + 4 * i, static_cast<qint64>(Masks[static_cast<size_t>(i)]), 4);
        QByteArray bytes("BM");
        bytes.resize(14);
        bytes.replace(2, 12, QByteArray(12, '\0'));
        Put(bytes, 10, 14 + header.size() + palette.size(), 4);
        return bytes + header + palette + Pixels();
    }

    static void Put(QByteArray& bytes, qsizetype offset, qint64 value, int size) {
        for (int i = 0; i < size; ++i) bytes[offset + i] = static_cast<char>(value >> (8 * i));
    }

  private:
    static QColor Fields(quint32 raw, const std::array<quint32, 3>& masks) {
        const auto level = [raw](quint32 mask) {
            return qRound(static_cast<double>(raw & mask) * 255.0 / static_cast<double>(mask));
        };
        return QColor(level(masks[0]), level(masks[1]), level(masks[2]));
    }

    [[nodiscard]] QByteArray Pixels() const {
        QByteArray all;
        for (int line = 0; line < Height; ++line) {
            const int y = TopDown ? line : Height - 1 - line;
            QByteArray row((Width * Bits + 31) / 32 * 4, '\0');
            for (int x = 0; x < Width; ++x) {
                if (Bits >= 16) {
                    Put(row, x * Bits / 8, Raw(x, y), Bits / 8);
                    continue;
                }
                const int at = x * Bits / 8;
                const int shift = 8 - Bits - x * Bits % 8;
                row[at] = static_cast<char>(row.at(at) | static_cast<int>(Raw(x, y) << shift));
            }
            all += row;
        }
        return all;
    }
};
