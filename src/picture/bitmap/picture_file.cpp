#include "picture/bitmap/picture_file.h"

#include "base/paths.h"
#include "picture/bitmap/bitmap_file.h"
#include "picture/bitmap/gif_file.h"
#include "picture/bitmap/jpeg_file.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int mostMegabytes = 256;  // decoded: MostPicturePixels at 8 bytes, as deep as PNG goes

FilePicture Failed(PictureFault fault) {
    return {.Image = {}, .Fault = fault};
}

bool Alike(const QImage& image, int alpha) {
    for (int y = 0; y < image.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(row, row + image.width(), [=](QRgb p) { return qAlpha(p) == alpha; }))
            return false;
    }
    return true;
}

// Without transparency where nothing is transparent.
FilePicture Decoded(QImage image) {
    if (image.isNull()) return Failed(PictureFault::Unreadable);
    if (image.hasAlphaChannel()) {
        image = std::move(image).convertToFormat(QImage::Format_ARGB32);
        if (!Alike(image, 255)) return {.Image = image, .Fault = PictureFault::None};
    }
    return {.Image = std::move(image).convertToFormat(QImage::Format_BGR888),
            .Fault = PictureFault::None};
}

FilePicture ReadBitmap(QIODevice& file) {
    BitmapReader reader;
    if (reader.Open(file) != ImagingDone) return Failed(PictureFault::Unreadable);
    const QSize size(reader.Width(), reader.Height());
    if (const PictureFault fault = SizeFault(size, file.size()); fault != PictureFault::None)
        return Failed(fault);
    const bool alpha = reader.HasAlpha();
    QImage image(size, alpha ? QImage::Format_ARGB32 : QImage::Format_BGR888);
    if (image.isNull()) return Failed(PictureFault::TooLarge);
    const int bits = alpha ? 32 : 24;
    if (reader.ReadPixels({image.bits(), image.bytesPerLine()}, bits) != ImagingDone)
        return Failed(PictureFault::Unreadable);
    // Programs that know nothing of transparency leave zeros.
    if (alpha && Alike(image, 0)) image.reinterpretAsFormat(QImage::Format_RGB32);
    return Decoded(image);
}

FilePicture ReadPng(QByteArray& bytes) {
    QImageReader::setAllocationLimit(mostMegabytes);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "png");
    const PictureFault fault = SizeFault(reader.size(), bytes.size());
    return fault == PictureFault::None ? Decoded(reader.read()) : Failed(fault);
}

FilePicture ReadAny(QIODevice& file, QSize enough) {
    if (file.peek(2) == "BM") return ReadBitmap(file);
    // Room is made for as many bytes as are asked for.
    QByteArray bytes = file.read(std::min(file.size(), MostPictureBytes));
    if (bytes.startsWith("\xFF\xD8")) return ReadJpeg(bytes, enough);
    if (bytes.startsWith("\x89PNG")) return ReadPng(bytes);
    if (!bytes.startsWith("GIF8")) return Failed(PictureFault::Unreadable);
    const FilePicture picture = ReadGif(bytes);
    return picture.Fault == PictureFault::None ? Decoded(picture.Image) : picture;
}

}  // namespace

PictureFault SizeFault(QSize size, qint64 bytes) {
    if (size.isEmpty()) return PictureFault::Unreadable;
    const qint64 pixels = qint64{size.width()} * size.height();
    if (pixels > MostPicturePixels) return PictureFault::TooLarge;
    return pixels > MostPixelsIn(bytes) ? PictureFault::Unreadable : PictureFault::None;
}

FilePicture ReadPicture(QIODevice& file, QSize enough) {
    FilePicture picture = ReadAny(file, enough);
    if (picture.Size.isEmpty()) picture.Size = picture.Image.size();
    return picture;
}

FilePicture ReadPicture(const QString& path, QSize enough) {
    // Only files: a pipe would keep the program waiting for its other end.
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile()) return Failed(PictureFault::Missing);
    if (info.size() > MostPictureBytes) return Failed(PictureFault::TooLarge);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Failed(PictureFault::Unreadable);
    return ReadPicture(file, enough);
}

QStringList PictureKinds() {
    return {"*.bmp", "*.gif", "*.jpeg", "*.jpg", "*.png"};
}

QString FindPicture(const QStringList& places, const QString& folder, const QString& name) {
    const QStringList steps = QString(name).replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    if (steps.isEmpty() || steps.contains("..")) return {};
    // As it is spelt in the first place, it is found without a look through the folders, which
    // takes as long as to put it on a picture.
    const QString first = places.value(0);
    const QFileInfo named(QDir(first).filePath(folder + u'/' + steps.join(u'/')));
    if (!first.isEmpty() && named.isFile()) return Paths::Native(named.filePath());
    return Paths::Find(places, folder + u'/' + name);
}

QImage OpaquePicture(const QImage& image) {
    if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_BGR888);
    QImage ground(image.size(), QImage::Format_BGR888);
    ground.fill(Qt::white);
    QPainter(&ground).drawImage(0, 0, image);
    return ground;
}
