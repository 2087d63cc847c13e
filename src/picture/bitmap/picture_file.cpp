#include "picture/bitmap/picture_file.h"

#include "base/paths.h"
#include "picture/bitmap/bitmap_file.h"
#include "picture/bitmap/picture_surface.h"

#include <turbojpeg.h>
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>

#include <algorithm>
#include <memory>

namespace {

constexpr int mostMegabytes = 256;  // decoded: MostPicturePixels at 8 bytes, as deep as PNG goes

struct CloseDecoder {
    void operator()(void* decoder) const { tjDestroy(decoder); }
};

FilePicture Failed(PictureFault fault) {
    return {.Image = {}, .Fault = fault};
}

bool TooManyPixels(QSize size) {
    return qint64{size.width()} * size.height() > MostPicturePixels;
}

bool IsOpaque(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(row, row + image.width(), [](QRgb p) { return qAlpha(p) == 255; }))
            return false;
    }
    return true;
}

FilePicture Decoded(const QImage& image) {
    if (image.isNull()) return Failed(PictureFault::Unreadable);
    if (image.hasAlphaChannel()) {
        const QImage mixed = image.convertToFormat(QImage::Format_ARGB32);
        if (!IsOpaque(mixed)) return {.Image = mixed, .Fault = PictureFault::None};
    }
    return {.Image = image.convertToFormat(QImage::Format_BGR888), .Fault = PictureFault::None};
}

FilePicture ReadBitmap(const QString& path, QSize size) {
    if (TooManyPixels(size)) return Failed(PictureFault::TooLarge);
    FilePicture picture;
    const bool loaded = LoadSurface(picture.Image, path);
    if (!loaded) return Failed(PictureFault::Unreadable);
    picture.Fault = PictureFault::None;
    return picture;
}

QSize GifScreen(const QByteArray& bytes) {
    constexpr qsizetype begin = 6;
    if (bytes.size() < begin + 4) return {};
    const char* const screen = bytes.constData() + begin;
    return {qFromLittleEndian<quint16>(screen), qFromLittleEndian<quint16>(screen + 2)};
}

// Reads formats that the toolkit knows. Those that are drawn by a description, not stored as
// pixels, are left out: their size says nothing about what they cost.
FilePicture ReadOther(QByteArray& bytes) {
    static const QByteArrayList known = {"png", "gif", "jpeg", "bmp", "webp", "tiff"};
    QImageReader::setAllocationLimit(mostMegabytes);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    if (!known.contains(reader.format())) return Failed(PictureFault::Unreadable);
    QSize size = reader.size();
    if (size.isEmpty()) return Failed(PictureFault::Unreadable);
    // A GIF is decoded as large as its screen; the decoder tells the size of the first picture.
    if (reader.format() == "gif") size = size.expandedTo(GifScreen(bytes));
    if (TooManyPixels(size)) return Failed(PictureFault::TooLarge);
    // The decoder of GIF is content with the part that has arrived. A whole one ends in ';'.
    if (reader.format() == "gif" && !bytes.endsWith(';')) return Failed(PictureFault::Unreadable);
    return Decoded(reader.read());
}

FilePicture ReadJpeg(QByteArray& bytes) {
    const std::unique_ptr<void, CloseDecoder> decoder(tjInitDecompress());
    const auto* const data = reinterpret_cast<const uchar*>(bytes.constData());
    const auto count = static_cast<unsigned long>(bytes.size());
    QSize size;
    int sampling = 0;
    int colours = 0;
    if (!decoder || tjDecompressHeader3(decoder.get(), data, count, &size.rwidth(), &size.rheight(),
                                        &sampling, &colours) != 0)
        return Failed(PictureFault::Unreadable);
    if (size.isEmpty()) return Failed(PictureFault::Unreadable);
    if (TooManyPixels(size)) return Failed(PictureFault::TooLarge);
    // The four colours of printing, which browsers show wrongly or not at all.
    if (colours == TJCS_CMYK || colours == TJCS_YCCK) return ReadOther(bytes);
    FilePicture picture{QImage(size, QImage::Format_BGR888), PictureFault::None, true};
    if (picture.Image.isNull()) return Failed(PictureFault::TooLarge);
    // A picture that is cut off is only a warning to the decoder, which makes up the rest.
    if (tjDecompress2(decoder.get(), data, count, picture.Image.bits(), size.width(),
                      static_cast<int>(picture.Image.bytesPerLine()), size.height(), TJPF_BGR,
                      TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS) != 0)
        return Failed(PictureFault::Unreadable);
    return picture;
}

}  // namespace

FilePicture ReadPicture(const QString& path) {
    // Only files: a pipe would keep the program waiting for its other end.
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile()) return Failed(PictureFault::Missing);
    if (info.size() > MostPictureBytes) return Failed(PictureFault::TooLarge);
    BitmapReader bitmap;
    const int opened = bitmap.Open(path);
    if (opened == ImagingDone) return ReadBitmap(path, {bitmap.Width(), bitmap.Height()});
    // Compressed bitmaps are left to the toolkit.
    if (opened != ImagingNotABitmap && opened != ImagingUnsupported)
        return Failed(PictureFault::Unreadable);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Failed(PictureFault::Unreadable);
    QByteArray bytes = file.read(MostPictureBytes);
    return bytes.startsWith("\xFF\xD8") ? ReadJpeg(bytes) : ReadOther(bytes);
}

QString FindPicture(const QStringList& places, const QString& folder, const QString& name) {
    const QStringList steps = QString(name).replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    if (steps.isEmpty() || steps.contains("..")) return {};
    return Paths::Find(places, folder + u'/' + name);
}

QImage OpaquePicture(const QImage& image) {
    if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_BGR888);
    QImage ground(image.size(), QImage::Format_BGR888);
    ground.fill(Qt::white);
    QPainter(&ground).drawImage(0, 0, image);
    return ground;
}
