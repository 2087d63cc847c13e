#include "picture/encode_jpeg.h"

#include "base/whole_file.h"
#include "picture/imaging.h"

#include <QFile>

namespace {

void ShowError(MessageBoxes& boxes, const QString& text) {
    boxes.Show(QStringLiteral("Error encountered!"), text);
}

void WidenBlackAndWhite(imgdes& image) {
    imgdes wide;
    if (allocimage(wide, image.Width, image.Height, 8) != ImagingDone) return;
    if (convert1bitto8bit(image, wide) != ImagingDone) return;
    freeimage(image);
    copyimgdes(wide, image);
}

bool LoadSource(const QString& source, BITMAPINFOHEADER& header, imgdes& image,
                MessageBoxes& boxes) {
    if (bmpinfo(source, header) != ImagingDone) {
        ShowError(boxes, QStringLiteral("Cannot find file"));
        return false;
    }
    const int bits = header.BitCount >= 16 ? 24 : header.BitCount;
    if (allocimage(image, header.Width, header.Height, bits) != ImagingDone) {
        ShowError(boxes, QStringLiteral("Not enough memory"));
        return false;
    }
    if (loadbmp(source, image) != ImagingDone) {
        freeimage(image);
        return false;
    }
    if (header.BitCount == 1) WidenBlackAndWhite(image);
    return true;
}

// The old picture is removed only when the new one lies ready beside it: it is missing for the
// moment of a rename, not for the time of encoding, and not at all when encoding fails.
bool SaveAfterDelete(const QString& target, const imgdes& image, int quality) {
    const QString ready = target + QStringLiteral(".new");
    if (savejpg(ready, image, quality) != ImagingDone) return false;
    QFile::remove(target);
    if (QFile::rename(ready, target)) return true;
    QFile::remove(ready);
    return false;
}

// Gives the file that could not be written; empty: none.
QString SavePicture(const PictureTarget& target, const imgdes& image, const QString& picture) {
    const bool local = target.LocalMode();
    const QString first = local ? target.Verzeichnis + QStringLiteral("pw.jpg") : picture;
    const bool saved = local && target.Delete
                           ? SaveAfterDelete(first, image, target.JPGQuality)
                           : savejpg(first, image, target.JPGQuality) == ImagingDone;
    if (!saved) return first;
    if (!local) return {};
    // What takes another file's name is written to the disk at once, and an older one is not
    // needed.
    QFile::remove(picture);
    return WholeFile::Copy(first, picture) ? QString() : picture;
}

}  // namespace

bool EncodeJpeg(PictureState& state, const PictureTarget& target, const QDateTime& time,
                MessageBoxes& boxes, SpareFile& spare, const QImage& picture) {
    const QString source = target.WorkFile(QStringLiteral("1pw.bmp"));
    const QString file = target.WorkFile(QStringLiteral("1pw.jpg"));
    BITMAPINFOHEADER header = BitmapHeader(picture.width(), picture.height());
    imgdes image = ImageOf(picture);
    if (picture.isNull() && !LoadSource(source, header, image, boxes)) return false;
    state.Unwritten = SavePicture(target, image, file);
    const bool made = state.Unwritten.isEmpty();
    freeimage(image);
    // A picture that was not saved stops nothing here, but what lies under its name is then an
    // older picture: in local mode it would come back as a new "1pw.jpg" and be counted and
    // published once more.
    if (made) {
        spare.PutAway(source, time.toMSecsSinceEpoch());
        state.LastHeader = header;
    } else {
        // Its room may be what is missing.
        QFile::remove(source);
    }
    return made;
}
