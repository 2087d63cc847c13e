#include "picture/imaging.h"

#include "base/whole_file.h"

#include <QFile>

#include <turbojpeg.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

constexpr qint64 mostSpareBytes = 32 * 1024 * 1024;

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
    if (bytes <= mostSpareBytes) Spare = {std::move(freed), bytes};
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

// Pixels in a form that the encoder takes.
struct Source {
    const uchar* Pixels = nullptr;
    int Stride = 0;
    int Format = TJPF_BGR;
    int Sampling = TJSAMP_420;
    std::unique_ptr<uchar[]> Converted = {};  // holds Pixels when they are not the image's own
};

bool AllGrey(const BitmapPalette& palette) {
    return std::all_of(palette.begin(), palette.end(), [](const BitmapColour& colour) {
        return colour.Blue == colour.Green && colour.Green == colour.Red;
    });
}

Source GreySource(const imgdes& image) {
    const qint64 bytes = image.Stride() * image.Height;
    Source source{nullptr, static_cast<int>(image.Stride()), TJPF_GRAY, TJSAMP_GRAY};
    source.Converted.reset(new (std::nothrow) uchar[static_cast<size_t>(bytes)]);
    if (!source.Converted) return source;
    std::transform(image.Pixels.get(), image.Pixels.get() + bytes, source.Converted.get(),
                   [&](uchar index) { return image.Palette[index].Green; });
    source.Pixels = source.Converted.get();
    return source;
}

Source ColourSource(const imgdes& image) {
    const qint64 stride = BitmapStride(image.Width, 24);
    Source source{nullptr, static_cast<int>(stride)};
    source.Converted.reset(new (std::nothrow) uchar[static_cast<size_t>(stride * image.Height)]);
    if (!source.Converted) return source;
    for (int y = 0; y < image.Height; ++y)
        ResolveIndexes(image.Pixels.get() + y * image.Stride(), image.Bits, image.Width,
                       image.Palette, source.Converted.get() + y * stride);
    source.Pixels = source.Converted.get();
    return source;
}

Source SourceOf(const imgdes& image) {
    if (image.Bits == 24) return {image.Pixels.get(), static_cast<int>(image.Stride())};
    return image.Bits == 8 && AllGrey(image.Palette) ? GreySource(image) : ColourSource(image);
}

struct CloseEncoder {
    void operator()(void* encoder) const { tjDestroy(encoder); }
};

int WriteWhole(const QString& name, const uchar* bytes, qint64 count) {
    const bool written = WholeFile::Replace(name, [=](QFile& file) {
        return file.write(reinterpret_cast<const char*>(bytes), count) == count;
    });
    return written ? ImagingDone : ImagingCannotWrite;
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

int savejpg(const QString& file, const imgdes& image, int quality) {
    if (!image.Pixels) return ImagingWrongImage;
    const Source source = SourceOf(image);
    if (!source.Pixels) return ImagingNoMemory;
    // Room for the worst case; what the encoder does not touch costs nothing.
    unsigned long size = tjBufSize(image.Width, image.Height, source.Sampling);
    const std::unique_ptr<uchar[]> buffer(new (std::nothrow) uchar[size]);
    const std::unique_ptr<void, CloseEncoder> encoder(tjInitCompress());
    if (!buffer || !encoder) return ImagingNoMemory;
    uchar* jpeg = buffer.get();
    const int fault = tjCompress2(encoder.get(), source.Pixels, image.Width, source.Stride,
                                  image.Height, source.Format, &jpeg, &size, source.Sampling,
                                  std::clamp(quality, 1, 100), TJFLAG_BOTTOMUP | TJFLAG_NOREALLOC);
    if (fault) return ImagingCannotEncode;
    return WriteWhole(file, jpeg, static_cast<qint64>(size));
}
