#include "picture/bitmap/picture_surface.h"

#include "picture/bitmap/bitmap_file.h"
#include "picture/bitmap/pixel_memory.h"

bool LoadSurface(QImage& surface, const QString& file) {
    BitmapReader reader;
    if (reader.Open(file) != ImagingDone) return false;
    if (qint64{reader.Width()} * reader.Height() > MostBitmapPixels) return false;
    const QSize size(reader.Width(), reader.Height());
    surface = {};
    surface = NewPicture(size);
    if (surface.isNull()) return false;
    return reader.ReadPixels({surface.bits(), surface.bytesPerLine()}, 24) == ImagingDone;
}

bool SaveSurface(const QImage& surface, const QString& file) {
    return SaveSurface(surface, file, surface.rect());
}

bool SaveSurface(const QImage& surface, const QString& file, const QRegion& changed) {
    if (surface.isNull()) return false;
    const QImage picture = surface.convertToFormat(QImage::Format_BGR888);
    QList<BitmapPart> parts;
    for (const QRect& part : changed& picture.rect())
        parts << BitmapPart{part.top(), part.height()};
    // Only read from, though a row in memory can also be written to elsewhere.
    uchar* const top = const_cast<uchar*>(picture.constBits());
    return RewriteBitmap(file, picture.width(), picture.height(), {top, picture.bytesPerLine()},
                         parts) == ImagingDone;
}
