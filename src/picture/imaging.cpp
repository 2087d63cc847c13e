#include "picture/imaging.h"

#include <cstdlib>
#include <new>

namespace {

constexpr qint64 MostSpareBytes = 32 * 1024 * 1024;

// The pixels of the image that was freed last, for the next one of the same size. A block this
// large would go back to the system, and getting it anew for each picture, page by page, takes more
// processor time than reading the file does.
struct SparePixels {
    std::unique_ptr<uchar[]> Pixels;
    qint64 Bytes = 0;
};

thread_local SparePixels Spare;

void Free(uchar* pixels, qint64 bytes) {
    std::unique_ptr<uchar[]> freed(pixels);
    if (bytes <= MostSpareBytes) Spare = {std::move(freed), bytes};
}

std::shared_ptr<uchar[]> Allocate(qint64 bytes) {
    if (Spare.Bytes != bytes) {
        Spare = {};
        Spare.Pixels.reset(new (std::nothrow) uchar[static_cast<size_t>(bytes)]);
    }
    Spare.Bytes = 0;
    if (!Spare.Pixels) return {};
    return {Spare.Pixels.release(), [bytes](uchar* pixels) { Free(pixels, bytes); }};
}

}  // namespace

int bmpinfo(const QString& file, BITMAPINFOHEADER& header) {
    BitmapReader reader;
    if (const int fault = reader.Open(file)) return fault;
    header = reader.Header();
    return ImagingDone;
}

int allocimage(imgdes& image, int width, int height, int bits) {
    if (bits != 1 && bits != 4 && bits != 8 && bits != 24) return ImagingWrongImage;
    const qint64 rows = std::llabs(height);
    if (width < 1 || rows < 1) return ImagingWrongImage;
    if (width > LongestBitmapSide || rows > LongestBitmapSide || width * rows > MostBitmapPixels)
        return ImagingNoMemory;
    const qint64 bytes = BitmapStride(width, bits) * rows;
    std::shared_ptr<uchar[]> pixels = Allocate(bytes);
    if (!pixels) return ImagingNoMemory;
    image = {width, static_cast<int>(rows), bits, std::move(pixels), {}};
    return ImagingDone;
}

int loadbmp(const QString& file, imgdes& image) {
    BitmapReader reader;
    if (const int fault = reader.Open(file)) return fault;
    const bool depthFits = image.Bits == reader.LoadedBits() || image.Bits == 24;
    if (!image.Pixels || !depthFits || image.Width != reader.Width() ||
        image.Height != reader.Height())
        return ImagingWrongImage;
    image.Palette = reader.Palette();
    return reader.ReadPixels(image.Rows(), image.Bits);
}

int convert1bitto8bit(const imgdes& source, imgdes& target) {
    if (source.Bits != 1 || target.Bits != 8 || source.Width != target.Width ||
        source.Height != target.Height || !source.Pixels || !target.Pixels)
        return ImagingWrongImage;
    target.Palette = source.Palette;
    for (int y = 0; y < source.Height; ++y) {
        const uchar* const from = source.Pixels.get() + y * source.Stride();
        uchar* const to = target.Pixels.get() + y * target.Stride();
        for (int x = 0; x < source.Width; ++x) to[x] = (from[x / 8] >> (7 - x % 8)) & 1;
    }
    return ImagingDone;
}

int copyimgdes(const imgdes& source, imgdes& target) {
    target = source;
    return ImagingDone;
}

int freeimage(imgdes& image) {
    image = {};
    return ImagingDone;
}
