#include "picture/offline_filter.h"

#include "picture/blend.h"
#include "picture/imaging.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int offlineQuality = 80;
constexpr int wholePercent = 100;
constexpr QSize plainSize(640, 480);

// Rows that are done in a fraction of a millisecond, so that the window stays usable.
constexpr int stripRows = 40;

}  // namespace

OfflineFilter::OfflineFilter(PictureState& pictureState, PicturePipeline& picturePipeline,
                             Waiting& wait, StatusDisplay& statusDisplay)
    : state(pictureState), pictures(picturePipeline), waiting(wait), display(statusDisplay) {}

// The operator's file, then the ones that came with the program.
QStringList OfflineFilter::OfflinePaths(const PictureSettings& settings) const {
    const QString folder = QStringLiteral("Offline");
    const QStringList places = state.ReadingFolders();
    QStringList paths{FindPicture(places, folder, settings.Offlinefile)};
    for (const QString& place : places)
        paths << FindPicture({place}, folder, PictureSettings().Offlinefile);
    paths.removeDuplicates();
    return paths;
}

OfflineFilter::Source OfflineFilter::ReadOffline(const PictureSettings& settings, QSize enough) {
    bool own = true;
    const QStringList paths = OfflinePaths(settings);
    for (const QString& path : paths) {
        const FilePicture picture = ReadPicture(path, enough);
        if (own) ShowFault(picture.Fault);
        if (picture.Fault == PictureFault::None) {
            if (!own) display.ShowStatus("The offline picture of the program takes its place");
            return {path, picture};
        }
        own = false;
    }
    display.ShowStatus("A grey picture takes its place");
    FilePicture plain{.Image = QImage(plainSize, QImage::Format_BGR888),
                      .Fault = PictureFault::None};
    plain.Image.fill(Qt::gray);
    return {{}, plain};
}

void OfflineFilter::ShowFault(PictureFault fault) {
    switch (fault) {
        case PictureFault::None:
            break;
        case PictureFault::Missing:
            display.ShowStatus("Offline file not found !");
            break;
        case PictureFault::TooLarge:
            display.ShowStatus("Offline file is too large");
            break;
        case PictureFault::Unreadable:
            display.ShowStatus("Offline file cannot be read");
            break;
    }
}

bool OfflineFilter::ApplyOfflineFilter(int percent, const PictureSettings& settings) {
    const QScopedValueRollback now(busy, true);
    FilePicture camera =
        ReadPicture(settings.LocalMode() ? settings.Verzeichnis + QStringLiteral("pw.jpg")
                                         : settings.WorkFile(QStringLiteral("1pw.jpg")));
    if (camera.Fault != PictureFault::None) {
        display.ShowStatus("The camera picture cannot be read");
        return false;
    }
    const QImage offline = OpaquePicture(ReadOffline(settings, camera.Image.size()).Picture.Image);
    display.ShowStatus("create Offline - Picture");
    if (!Blend(camera.Image, offline, std::clamp(percent, 0, wholePercent))) return false;
    if (!EncodeBlend(camera.Image, settings)) {
        display.ShowStatus("Cannot write the offline picture");
        return false;
    }
    display.ShowStatus("sending Offline - Picture");
    return true;
}

bool OfflineFilter::Blend(QImage& camera, const QImage& offline, int percent) {
    for (int y = 0; y < camera.height(); y += stripRows) {
        BlendRows(camera, offline, percent, y, stripRows);
        display.ShowStatus("processing Offline-Picture");
        waiting.Yield();
        if (waiting.Closing()) return false;
    }
    return true;
}

bool OfflineFilter::EncodeBlend(const QImage& picture, PictureSettings settings) {
    settings.JPGQuality = offlineQuality;
    state.Picture2 = picture;
    return pictures.SaveAndEncode(settings);
}

bool OfflineFilter::SaveAsJpeg(const QImage& picture, const QString& target) {
    return savejpg(target, ImageOf(OpaquePicture(picture)), offlineQuality) == ImagingDone;
}
