#pragma once

#include "picture/bitmap/bitmap_file.h"

#include <QString>

#include <memory>

// The imaging operations of the JPEG encoder, by their established names: each works on an image
// descriptor and returns 0 on success, else another ImagingResult.

// An image: rows from the bottom up, padded to 4 bytes. Copies of a descriptor share the pixels.
struct imgdes {
    int Width = 0;   // pixels
    int Height = 0;  // pixels
    int Bits = 0;    // 1, 4 or 8 (palette indexes) or 24 (blue, green, red)
    std::shared_ptr<uchar[]> Pixels;
    BitmapPalette Palette = {};

    [[nodiscard]] qint64 Stride() const { return BitmapStride(Width, Bits); }
    [[nodiscard]] BitmapRows Rows() const {
        return {Pixels.get() + (Height - 1) * Stride(), -Stride()};
    }
};

// Reads and checks the header of a bitmap file, and that the file is as long as it says.
[[nodiscard]] int bmpinfo(const QString& file, BITMAPINFOHEADER& header);

// Makes room for an image; a negative height counts as its amount. The pixels are not set.
// ImagingNoMemory also when it would be larger than any picture here.
[[nodiscard]] int allocimage(imgdes& image, int width, int height, int bits);

// Loads a bitmap file into an image of its size, as deep as the file or 24 bits. On a fault the
// pixels may be overwritten in part.
[[nodiscard]] int loadbmp(const QString& file, imgdes& image);

// Widens an image of 1 bit into one of 8 bits and the same size, palette included.
[[nodiscard]] int convert1bitto8bit(const imgdes& source, imgdes& target);

// Makes `target` describe the image that `source` describes.
int copyimgdes(const imgdes& source, imgdes& target);

// Writes the image as a JPEG file with halved colour resolution (4:2:0), in place of a file of that
// name and only when whole. An 8-bit image whose colours are all grey becomes a grey JPEG.
// quality: 1 to 100, others count as the nearest of them.
[[nodiscard]] int savejpg(const QString& file, const imgdes& image, int quality);

// Lets go of the pixels; the last descriptor frees them. An empty image is no fault.
int freeimage(imgdes& image);
