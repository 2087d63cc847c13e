#include "picture/overlay/picture_overlay.h"

#include "picture/overlay/transparent_copy.h"

#include <QPainter>

namespace {

constexpr qsizetype mostReported = 100;

// Half the difference, the even neighbour where it lies between two pixels.
int Middle(int difference) {
    const int below = (difference - (difference & 1)) / 2;
    return difference % 2 != 0 && below % 2 != 0 ? below + 1 : below;
}

QString FaultText(const QString& name, PictureFault fault) {
    switch (fault) {
        case PictureFault::None:
            return {};
        case PictureFault::Missing:
            return "Overlay file not found !";
        case PictureFault::TooLarge:
            return "Overlay file is too large: " + name;
        case PictureFault::Unreadable:
            break;
    }
    return "Overlay file cannot be read: " + name;
}

}  // namespace

QPoint OverlayPosition(OverlayPlace place, QSize frame, QSize overlay) {
    const QSize rest = frame - overlay;
    const QPoint middle(Middle(rest.width()), Middle(rest.height()));
    switch (place) {
        case OverlayPlace::UpRight:
            break;
        case OverlayPlace::UpLeft:
            return {0, 0};
        case OverlayPlace::UpMiddle:
            return {middle.x(), 0};
        case OverlayPlace::DownRight:
            return {rest.width(), rest.height()};
        case OverlayPlace::DownLeft:
            return {0, rest.height()};
        case OverlayPlace::DownMiddle:
            return {middle.x(), rest.height()};
        case OverlayPlace::Center:
            return middle;
    }
    return {rest.width(), 0};
}

QRect PlaceOverlay(QImage& frame, const QImage& overlay, OverlayPlace place) {
    const QPoint at = OverlayPosition(place, frame.size(), overlay.size());
    if (overlay.hasAlphaChannel())
        QPainter(&frame).drawImage(at, overlay);
    else
        TransparentCopy(frame, at, overlay.size(), overlay, {}, overlay.pixel(0, 0));
    return QRect(at, overlay.size()) & frame.rect();
}

bool PictureOverlay::StampOverlayPicture(QImage& picture, const OverlaySettings& settings) {
    const QString name = settings.PictureEff ? list.Next(settings.PictureUB, settings.PictureList)
                                             : settings.Overlayfile;
    const FilePicture& overlay = file.Read(FindPicture(places, QStringLiteral("overlay"), name));
    Report(name, overlay.Fault, settings.PictureCapture);
    stamped = {};
    if (overlay.Fault != PictureFault::None) return !settings.PictureCapture;
    if (settings.PictureCapture) {
        picture = OpaquePicture(overlay.Image);
        stamped = picture.rect();
    } else {
        stamped = PlaceOverlay(picture, overlay.Image, settings.PositionBild);
    }
    return true;
}

void PictureOverlay::Report(const QString& name, PictureFault fault, bool alone) {
    if (fault == PictureFault::None) {
        reported.remove(name);
        return;
    }
    if (reported.contains(name) && reported.value(name) == fault) return;
    if (reported.size() >= mostReported) reported.clear();
    reported.insert(name, fault);
    display->ShowStatus(FaultText(name, fault));
    if (alone) display->ShowStatus("No picture: only the overlay may be published");
}
