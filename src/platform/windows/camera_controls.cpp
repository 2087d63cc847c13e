#include "platform/windows/camera_controls.h"

#include "platform/windows/camera_monikers.h"
#include "platform/windows/filter_controls.h"
#include "platform/windows/property_pages.h"

namespace {

// Each call loads a filter of its own: drivers keep the values for all filters of a camera, also
// for the one that delivers pictures meanwhile.
class DirectShowControls : public CameraControls {
  public:
    QList<CameraControl> List(const CaptureDevice& device) const override {
        const ComThread thread;
        const auto filter = FilterAt(device.Address);
        return filter ? FilterControls::List(*filter) : QList<CameraControl>();
    }

    bool Set(const CaptureDevice& device, const CameraControlValue& value) override {
        const ComThread thread;
        const auto filter = FilterAt(device.Address);
        return filter && FilterControls::Set(*filter, value);
    }

    QStringList KnownIds() const override { return FilterControls::KnownIds(); }

    bool HasOwnPages(const CaptureDevice& device) const override {
        const ComThread thread;
        const auto filter = FilterAt(device.Address);
        return filter && HasPropertyPages(*filter);
    }

    void ShowOwnPages(const CaptureDevice& device, quintptr window) override {
        const ComThread thread;
        const auto filter = FilterAt(device.Address);
        if (filter) ShowPropertyPages(*filter, device.Name, window);
    }
};

}  // namespace

std::unique_ptr<CameraControls> MakeCameraControls() {
    return std::make_unique<DirectShowControls>();
}

void AdjustDirectShowCamera(const QString& address, const QList<CameraControlValue>& values) {
    const ComThread thread;
    const auto filter = FilterAt(address);
    if (!filter) return;
    SetCameraValues(values,
                    [&filter](const auto& value) { return FilterControls::Set(*filter, value); });
}
