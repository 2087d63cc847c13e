#pragma once

#include "picture/bitmap/bitmap_file.h"

#include <QImage>
#include <QString>

// The imaging operations of the JPEG encoder, by their established names: each works on an image
// descriptor and returns 0 on success, else another ImagingResult.

// An image. Copies of a descriptor share the pixels until one of them is changed.
struct imgdes {
    int Width = 0;   // pixels
    int Height = 0;  // pixels
    int Bits = 0;    // 1, 4 or 8 (palette indexes) or 24 (blue, green, red)
    // Format_BGR888 of 24 bits; else bytes of indexes as a bitmap file has them.
    QImage Pixels = {};
    BitmapPalette Palette = {};
};

// The image that a picture of Format_BGR888 is. They share the pixels.
[[nodiscard]] imgdes ImageOf(const QImage& picture);

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
