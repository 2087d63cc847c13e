#include "picture/imaging.h"

#include "base/whole_file.h"
#include "picture/bitmap/pixel_memory.h"

#include <QFile>

#include <turbojpeg.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

// The image in a form that the encoder takes.
struct Source {
    QImage Pixels;
    int Format = TJPF_BGR;
    int Sampling = TJSAMP_420;
};

bool AllGrey(const BitmapPalette& palette) {
    return std::all_of(palette.begin(), palette.end(), [](const BitmapColour& colour) {
        return colour.Blue == colour.Green && colour.Green == colour.Red;
    });
}

Source GreySource(const imgdes& image) {
    Source source{QImage(image.Width, image.Height, QImage::Format_Grayscale8), TJPF_GRAY,
                  TJSAMP_GRAY};
    if (source.Pixels.isNull()) return source;
    for (int y = 0; y < image.Height; ++y) {
        const uchar* const from = image.Pixels.constScanLine(y);
        std::transform(from, from + image.Width, source.Pixels.scanLine(y),
                       [&](uchar index) { return image.Palette[index].Green; });
    }
    return source;
}

Source ColourSource(const imgdes& image) {
    Source source{NewPicture({image.Width, image.Height})};
    if (source.Pixels.isNull()) return source;
    for (int y = 0; y < image.Height; ++y)
        ResolveIndexes(image.Pixels.constScanLine(y), image.Bits, image.Width, image.Palette,
                       source.Pixels.scanLine(y));
    return source;
}

Source SourceOf(const imgdes& image) {
    if (image.Bits == 24) return {image.Pixels};
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

imgdes ImageOf(const QImage& picture) {
    return {picture.width(), picture.height(), 24, picture};
}

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
    const int high = static_cast<int>(rows);
    QImage pixels = bits == 24 ? NewPicture({width, high})
                               : QImage(static_cast<int>(BitmapStride(width, bits)), high,
                                        QImage::Format_Grayscale8);
    if (pixels.isNull()) return ImagingNoMemory;
    image = {width, high, bits, std::move(pixels), {}};
    return ImagingDone;
}

int loadbmp(const QString& file, imgdes& image) {
    BitmapReader reader;
    if (const int fault = reader.Open(file)) return fault;
    const bool depthFits = image.Bits == reader.LoadedBits() || image.Bits == 24;
    if (image.Pixels.isNull() || !depthFits || image.Width != reader.Width() ||
        image.Height != reader.Height())
        return ImagingWrongImage;
    image.Palette = reader.Palette();
    return reader.ReadPixels({image.Pixels.bits(), image.Pixels.bytesPerLine()}, image.Bits);
}

int convert1bitto8bit(const imgdes& source, imgdes& target) {
    if (source.Bits != 1 || target.Bits != 8 || source.Width != target.Width ||
        source.Height != target.Height || source.Pixels.isNull() || target.Pixels.isNull())
        return ImagingWrongImage;
    target.Palette = source.Palette;
    for (int y = 0; y < source.Height; ++y) {
        const uchar* const from = source.Pixels.constScanLine(y);
        uchar* const to = target.Pixels.scanLine(y);
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
    if (image.Pixels.isNull()) return ImagingWrongImage;
    const Source source = SourceOf(image);
    if (source.Pixels.isNull()) return ImagingNoMemory;
    // Room for the worst case; what the encoder does not touch costs nothing.
    unsigned long size = tjBufSize(image.Width, image.Height, source.Sampling);
    const std::unique_ptr<uchar[]> buffer(new (std::nothrow) uchar[size]);
    const std::unique_ptr<void, CloseEncoder> encoder(tjInitCompress());
    if (!buffer || !encoder) return ImagingNoMemory;
    uchar* jpeg = buffer.get();
    const int fault =
        tjCompress2(encoder.get(), source.Pixels.constBits(), image.Width,
                    static_cast<int>(source.Pixels.bytesPerLine()), image.Height, source.Format,
                    &jpeg, &size, source.Sampling, std::clamp(quality, 1, 100), TJFLAG_NOREALLOC);
    if (fault) return ImagingCannotEncode;
    return WriteWhole(file, jpeg, static_cast<qint64>(size));
}
