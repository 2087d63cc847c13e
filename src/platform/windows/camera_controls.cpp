#include "platform/windows/camera_controls.h"

#include "platform/windows/camera_monikers.h"
#include "platform/windows/filter_controls.h"

#include <olectl.h>

#include <vector>

namespace {

// Those of the filter. Those of its pins set the format of this filter only, and FFmpeg opens one
// of its own.
std::vector<CLSID> PagesOf(IBaseFilter& filter) {
    const auto driver = ComQuery<ISpecifyPropertyPages>(filter);
    CAUUID found{};
    if (!driver || FAILED(driver->GetPages(&found))) return {};
    const std::vector<CLSID> pages(found.pElems, found.pElems + found.cElems);
    CoTaskMemFree(found.pElems);
    return pages;
}

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
        return filter && !PagesOf(*filter).empty();
    }

    void ShowOwnPages(const CaptureDevice& device, quintptr window) override {
        const ComThread thread;
        const auto filter = FilterAt(device.Address);
        if (!filter) return;
        std::vector<CLSID> pages = PagesOf(*filter);
        IUnknown* object = filter.get();
        const std::wstring name = device.Name.toStdWString();
        OleCreatePropertyFrame(reinterpret_cast<HWND>(window), 0, 0, name.c_str(), 1, &object,
                               static_cast<ULONG>(pages.size()), pages.data(), LOCALE_USER_DEFAULT,
                               0, nullptr);
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
    QList<CameraControlValue> refused;
    for (const CameraControlValue& value : values)
        if (!FilterControls::Set(*filter, value)) refused << value;
    // A value is refused as long as its automatic is on, and that may have stood behind it.
    for (const CameraControlValue& value : refused) (void)FilterControls::Set(*filter, value);
}
