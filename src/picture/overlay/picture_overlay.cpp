#include "picture/overlay/picture_overlay.h"

#include "base/profile_file.h"
#include "picture/bitmap/picture_surface.h"
#include "picture/overlay/transparent_copy.h"

#include <QFile>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int MostInterval = 32767;
constexpr qsizetype MostReported = 100;

const QString General = QStringLiteral("Einstellungen");
const QString Pictures = QStringLiteral("Picture");

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

QPoint OverlayPosition(int position, QSize frame, QSize overlay) {
    const QSize rest = frame - overlay;
    const QPoint middle(Middle(rest.width()), Middle(rest.height()));
    switch (position) {
        case 1:
            return {0, 0};
        case 2:
            return {middle.x(), 0};
        case 3:
            return {rest.width(), rest.height()};
        case 4:
            return {0, rest.height()};
        case 5:
            return {middle.x(), rest.height()};
        case 6:
            return middle;
        default:
            return {rest.width(), 0};
    }
}

PictureOverlay::PictureOverlay(PictureState& pictureState, StatusDisplay& statusDisplay)
    : state(pictureState), display(statusDisplay) {}

QString PictureOverlay::Setting(const QString& section, const QString& key) const {
    return ReadSetting(state.SettingsFile, section, key);
}

QString PictureOverlay::FramePath() const {
    return state.WorkPath + QStringLiteral("1pw.bmp");
}

QString PictureOverlay::OverlayName() {
    // Compared literally, unlike the check boxes: existing files have it this way.
    if (Setting(General, QStringLiteral("PictureEff")) == "true") {
        const int interval = WholeNumber(Setting(Pictures, QStringLiteral("UB")));
        return list.Next(std::clamp(interval, 0, MostInterval), [this](int number) {
            return Setting(Pictures, QString::number(number) + QStringLiteral("Pic"));
        });
    }
    const QString name = Setting(General, QStringLiteral("Overlayfile"));
    return name.isEmpty() ? QStringLiteral("Overlay.bmp") : name;
}

bool PictureOverlay::StampOverlayPicture() {
    const QString name = OverlayName();
    const QString path = FindPicture(state.ReadingFolders(), QStringLiteral("overlay"), name);
    const FilePicture& overlay = file.Read(path);
    Report(name, overlay.Fault);
    if (state.OnlyOverlay) return TakeAlone(overlay);
    if (!LoadSurface(state.Picture2, FramePath())) return false;
    if (overlay.Fault == PictureFault::None) PlaceOverlay(overlay.Image);
    return true;
}

bool PictureOverlay::TakeAlone(const FilePicture& overlay) {
    if (overlay.Fault != PictureFault::None) {
        QFile::remove(FramePath());
        return false;
    }
    state.Picture2 = OpaquePicture(overlay.Image);
    return true;
}

void PictureOverlay::PlaceOverlay(const QImage& overlay) {
    const int position = WholeNumber(Setting(General, QStringLiteral("PositionBild")));
    QImage& frame = state.Picture2;
    const QPoint at = OverlayPosition(position, frame.size(), overlay.size());
    if (overlay.hasAlphaChannel())
        QPainter(&frame).drawImage(at, overlay);
    else
        TransparentCopy(frame, at, overlay.size(), overlay, {}, overlay.pixel(0, 0));
}

void PictureOverlay::Report(const QString& name, PictureFault fault) {
    if (fault == PictureFault::None) {
        reported.remove(name);
        return;
    }
    if (reported.contains(name) && reported.value(name) == fault) return;
    if (reported.size() >= MostReported) reported.clear();
    reported.insert(name, fault);
    display.ShowStatus(FaultText(name, fault));
    if (state.OnlyOverlay) display.ShowStatus("No picture: only the overlay may be published");
}
