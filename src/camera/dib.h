#pragma once

#include <QtGlobal>

#include <vector>

// A device-independent bitmap as capture delivers it: 24 bits a pixel, blue first, the bottom row
// first, each row padded to four bytes. The form in which a bitmap file stores it, so that saving
// is one header and one write.
struct Dib {
    int Width = 0;            // pixels
    int Height = 0;           // pixels
    std::vector<uchar> Bits;  // Stride() * Height bytes

    // Bytes from one row to the next.
    [[nodiscard]] int Stride() const { return RowBytes(Width); }
    [[nodiscard]] static int RowBytes(int width) { return (width * 3 + 3) / 4 * 4; }

    // Whether there is a picture, all of it.
    [[nodiscard]] bool Valid() const {
        return Width > 0 && Height > 0 && Bits.size() == size_t(Stride()) * size_t(Height);
    }

    // Makes room for a picture of this size; the old contents are lost.
    void Resize(int width, int height) {
        Width = width;
        Height = height;
        Bits.resize(size_t(Stride()) * size_t(Height));
    }
};
