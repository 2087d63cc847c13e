#include "camera/ezvidcap.h"

#include "camera/capture_session.h"

#include <algorithm>

// The capture control's list of cameras, its selection and its preview.

void ezVidCap::SetCameras(const QStringList& nameBarAddress) {
    entries = nameBarAddress;
    List();
}

void ezVidCap::List() {
    cameras = ListCameras(devices.List(), entries);
    listed = true;
}

QStringList ezVidCap::DriverNames() {
    List();
    QStringList names;
    for (const Camera& camera : cameras) names << camera.Name;
    return names;
}

int ezVidCap::NumCapDevs() {
    if (!listed) List();
    return static_cast<int>(cameras.size());
}

int ezVidCap::DriverIndex() const {
    if (!isSelected) return -1;
    const auto found = std::ranges::find_if(
        cameras, [this](const Camera& camera) { return camera.SameAs(selected); });
    return found == cameras.end() ? -1 : static_cast<int>(found - cameras.begin());
}

void ezVidCap::SetDriverIndex(int index) {
    if (!listed) List();
    const bool exists = index >= 0 && index < cameras.size();
    if (exists && isSelected && cameras[index].SameAs(selected)) return;
    CloseSession();
    isSelected = exists;
    selected = exists ? cameras[index] : Camera();
    position = std::make_shared<CapturePosition>(BeforeFirstPicture);
    failed = false;
    Report(CaptureFault::None);
    watch.SetEnabled(false);
    ApplyPreview();
}

std::optional<CaptureDevice> ezVidCap::InstalledDevice() const {
    if (!InstalledSelected()) return std::nullopt;
    const QList<Camera> now = ListCameras(devices.List(), {});
    const auto found =
        std::ranges::find_if(now, [this](const Camera& camera) { return camera.SameAs(selected); });
    return found == now.end() ? std::nullopt : std::optional(found->Device);
}

void ezVidCap::SetEnabled(bool on) {
    if (on == enabled) return;
    enabled = on;
    if (!on) CloseSession();
    ApplyPreview();
}

void ezVidCap::SetCaptureFormat(const QString& wanted) {
    if (wanted == format) return;
    format = wanted;
    if (isSelected && selected.Kind == CaptureKind::Device) CloseSession();
    watch.SetEnabled(false);
    ApplyPreview();
}

void ezVidCap::SetPreviewRate(int framesPerSecond) {
    previewRate = std::clamp(framesPerSecond, 1, 60);
    ApplyPreview();
}

void ezVidCap::SetPreview(bool on) {
    preview = on;
    ApplyPreview();
}

void ezVidCap::SetPreviewSize(QSize size) {
    previewSize = size;
    ApplyPreview();
}

// Opens the camera when the preview needs it; without a preview it is closed in a while.
void ezVidCap::ApplyPreview() {
    const bool shown = preview && enabled && isSelected;
    if (session) session->SetPreview(shown ? previewRate : 0, previewSize);
    if (shown && !session && !watch.Enabled()) (void)OpenSession();
    watch.SetEnabled(shown);
    if (shown)
        quiet.SetEnabled(false);
    else if (session && grabbing == 0)
        quiet.SetEnabled(true);
}

// Looks after the preview now and then.
void ezVidCap::Watch() {
    if (grabbing > 0) return;
    if (!session) {
        (void)OpenSession();
        return;
    }
    const bool silent = sessionWatched == sessions && previewsWatched == previews;
    sessionWatched = sessions;
    previewsWatched = previews;
    if (!silent) return;
    CloseSession();
    Report(CaptureFault::Silent);
}
