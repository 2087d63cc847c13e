#include "picture/imaging.h"

#include "base/whole_file.h"

#include <QFile>

#include <turbojpeg.h>

#include <algorithm>
#include <new>

namespace {

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
