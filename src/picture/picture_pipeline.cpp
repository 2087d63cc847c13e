#include "picture/picture_pipeline.h"

#include "base/profile_file.h"
#include "picture/bitmap/picture_surface.h"
#include "picture/encode_jpeg.h"

#include <QFile>

namespace {

constexpr int PreviewRate = 10;
constexpr int MostDeleteAttempts = 1000;
constexpr int PictureOnly = 4;
constexpr int NoOverlay = 5;

const QString General = QStringLiteral("Einstellungen");

}  // namespace

PicturePipeline::PicturePipeline(PictureState& pictureState, CaptureControl& captureControl,
                                 Waiting& wait, MessageBoxes& messageBoxes)
    : state(pictureState), capture(captureControl), waiting(wait), boxes(messageBoxes) {}

bool PicturePipeline::MakePicture() {
    state.Unwritten.clear();
    if (!CaptureFrame()) return false;
    ReadOverlaySettings();
    if (overlays) overlays->BuildOverlayText();
    // Without this cycle's frame the surface still holds the last picture: better none than that
    // one again under a new time.
    if (!LoadFrame()) return false;
    const bool withText = state.OverlayMode != PictureOnly && state.OverlayMode != NoOverlay;
    if (overlays && withText) overlays->DrawOverlayText();
    // The overlay may be there to cover the raw frame: that must not be published when the surface
    // cannot be saved. Removed beforehand, it also never reaches the disk, whereas a file system
    // that is careful with renames starts writing a replaced file at once.
    QFile::remove(FramePath());
    if (SaveSurface(state.Picture2, FramePath())) return EncodeJpeg();
    state.Unwritten = FramePath();
    return false;
}

bool PicturePipeline::CaptureFrame() {
    const bool grabbed = capture.GrabFrame();
    const bool saved = capture.SaveDIB(FramePath());
    SetPreview();
    if (grabbed && !saved) state.Unwritten = FramePath();
    return state.CameraRunning && capture.Running() && grabbed && saved;
}

void PicturePipeline::SetPreview() {
    capture.SetPreviewRate(PreviewRate);
    if (state.PreviewLock) return;
    const QString preview = Setting(General, QStringLiteral("Preview"));
    capture.SetPreview(preview.isEmpty() || WholeNumber(preview) != 0);
}

void PicturePipeline::ReadOverlaySettings() {
    state.OverlayMode = WholeNumber(Setting(General, QStringLiteral("Overlay")));
    if (state.OverlayMode < 0 || state.OverlayMode > NoOverlay) state.OverlayMode = NoOverlay;
    state.OnlyOverlay =
        WholeNumber(Setting(QStringLiteral("Picture"), QStringLiteral("Capture"))) != 0;
    state.CombineOverlay = WholeNumber(Setting(General, QStringLiteral("OverKombi"))) != 0;
    if (state.OverlayMode == PictureOnly) state.CombineOverlay = true;
    if (state.OverlayMode == NoOverlay) state.CombineOverlay = false;
}

bool PicturePipeline::LoadFrame() {
    if (overlays && state.CombineOverlay) return overlays->StampOverlayPicture();
    return LoadSurface(state.Picture2, FramePath());
}

bool PicturePipeline::EncodeJpeg() {
    return ::EncodeJpeg(state, waiting.OwnClock().Now(), boxes);
}

void PicturePipeline::SaveCamPreview() {
    if (!capture.GrabFrame() || !state.CameraRunning || !capture.Running()) return;
    (void)capture.SaveDIB(state.WorkPath + QStringLiteral("cam.bmp"));
}

void PicturePipeline::DeleteWorkingFiles() {
    DeleteWorkingFile(state.WorkPath + QStringLiteral("1pw.jpg"));
    DeleteWorkingFile(FramePath());
}

void PicturePipeline::DeleteWorkingFile(const QString& file) {
    for (int attempt = 0; attempt < MostDeleteAttempts && QFile::exists(file); ++attempt) {
        QFile::remove(file);
        waiting.Yield();
    }
}

QString PicturePipeline::Setting(const QString& section, const QString& key) const {
    return ReadSetting(state.SettingsFile, section, key);
}

QString PicturePipeline::FramePath() const {
    return state.WorkPath + QStringLiteral("1pw.bmp");
}
