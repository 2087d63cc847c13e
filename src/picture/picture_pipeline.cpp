#include "picture/picture_pipeline.h"

#include "base/clock.h"
#include "base/waiting.h"
#include "base/whole_file.h"
#include "picture/bitmap/picture_surface.h"
#include "picture/encode_jpeg.h"

#include <QFile>

#include <utility>

namespace {

constexpr int previewRate = 10;
constexpr int mostDeleteAttempts = 1000;

const QString frameName = QStringLiteral("1pw.bmp");

}  // namespace

PicturePipeline::PicturePipeline(PictureState& pictureState, CaptureControl& captureControl,
                                 Waiting& wait, MessageBoxes& messageBoxes, StatusDisplay& display)
    : state(pictureState),
      capture(captureControl),
      waiting(wait),
      boxes(messageBoxes),
      overlays(display, pictureState.ReadingFolders(), pictureState.Locale),
      textFile(display, wait),
      archive(display, wait.OwnClock()) {}

bool PicturePipeline::MakePicture(const PictureSettings& settings) {
    const QString frame = settings.WorkFile(frameName);
    state.Unwritten.clear();
    frozenSince.reset();
    textFile.Ask(settings);
    textFile.Await();
    if (!CaptureFrame(settings)) {
        still.Forget();
        return false;
    }
    state.Picture2 = capture.TakeFrame();
    const bool known = !state.Picture2.isNull();
    if (!known && !LoadSurface(state.Picture2, frame)) return false;
    const QDateTime now = waiting.OwnClock().Now();
    OverlaySettings over = static_cast<const OverlaySettings&>(settings);
    over.TextFileLines = textFile.Lines(settings, now);
    const bool publishable = !Frozen(settings) && overlays.PutOn(state.Picture2, over, now);
    // The overlay may be there to cover the raw frame: that must not be published when there is no
    // overlay or the surface cannot be saved. Removed beforehand, it also never reaches the disk,
    // whereas a file system that is careful with renames starts writing a replaced file at once.
    if (!publishable) {
        QFile::remove(frame);
        return false;
    }
    const bool kept = WholeFile::SetAside(frame);
    return SaveAndEncode(settings,
                         kept && known ? overlays.Changed() : QRegion(state.Picture2.rect()));
}

bool PicturePipeline::Frozen(const PictureSettings& settings) {
    constexpr qint64 minute = 60'000;
    if (settings.FrozenAfter <= 0 || !capture.MayFreeze()) {
        still.Forget();
        return false;
    }
    const qint64 now = waiting.OwnClock().Milliseconds();
    still.Note(state.Picture2, now);
    if (now - *still.Since() >= settings.FrozenAfter * minute) frozenSince = still.Since();
    return frozenSince.has_value();
}

QString PicturePipeline::CameraTrouble() const {
    if (!frozenSince) return capture.Reason();
    const Clock& clock = waiting.OwnClock();
    const QDateTime since = clock.Now().addMSecs(*frozenSince - clock.Milliseconds());
    const bool today = since.date() == clock.Now().date();
    return QStringLiteral("The picture of the camera has not changed since %1")
        .arg(since.toString(today ? QStringLiteral("HH:mm") : QStringLiteral("yyyy-MM-dd HH:mm")));
}

bool PicturePipeline::SaveAndEncode(const PictureSettings& settings) {
    return SaveAndEncode(settings, state.Picture2.rect());
}

// changed: where the surface is not what was set aside.
bool PicturePipeline::SaveAndEncode(const PictureSettings& settings, const QRegion& changed) {
    const QImage picture = std::exchange(state.Picture2, {});
    const QString frame = settings.WorkFile(frameName);
    if (SaveSurface(picture, frame, changed)) return EncodeJpeg(settings, picture);
    state.Unwritten = frame;
    return false;
}

bool PicturePipeline::CaptureFrame(const PictureSettings& settings) {
    const QString frame = settings.WorkFile(frameName);
    const bool grabbed = capture.GrabFrame();
    const bool saved = capture.SaveDIB(frame);
    capture.SetPreviewRate(previewRate);
    if (!state.PreviewLock) capture.SetPreview(settings.CapturePreview);
    if (grabbed && !saved) state.Unwritten = frame;
    return state.CameraRunning && capture.Running() && grabbed && saved;
}

bool PicturePipeline::EncodeJpeg(const PictureSettings& settings, const QImage& picture) {
    const QDateTime time = waiting.OwnClock().Now();
    if (!::EncodeJpeg(state, settings, time, boxes, spare, picture)) return false;
    archive.Keep(settings.WorkFile(QStringLiteral("1pw.jpg")), settings, time, state.Locale);
    return true;
}

void PicturePipeline::SaveCamPreview(const PictureTarget& target) {
    if (!capture.GrabFrame() || !state.CameraRunning || !capture.Running()) return;
    (void)capture.SaveDIB(target.WorkFile(QStringLiteral("cam.bmp")));
}

void PicturePipeline::DeleteWorkingFiles(const PictureTarget& target) {
    DeleteWorkingFile(target.WorkFile(QStringLiteral("1pw.jpg")));
    DeleteWorkingFile(target.WorkFile(frameName));
    WholeFile::Forget(target.WorkFile(frameName));
}

void PicturePipeline::DeleteWorkingFile(const QString& file) {
    for (int attempt = 0; attempt < mostDeleteAttempts && QFile::exists(file); ++attempt) {
        QFile::remove(file);
        waiting.Yield();
    }
}
