#include "platform/windows/camera_controls.h"

#include "platform/windows/camera_monikers.h"
#include "platform/windows/filter_controls.h"

#include <olectl.h>

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

    bool ShowOwnPage(const CaptureDevice& device, OwnPage page, quintptr window) override {
        // A driver's format page sets one filter's pin only, and FFmpeg opens one of its own: what
        // is chosen there would never be seen.
        if (page == OwnPage::Format) return false;
        const ComThread thread;
        const auto filter = FilterAt(device.Address);
        const auto driver = filter ? ComQuery<ISpecifyPropertyPages>(*filter) : nullptr;
        CAUUID pages{};
        if (!driver || FAILED(driver->GetPages(&pages))) return false;
        IUnknown* object = filter.get();
        const std::wstring name = device.Name.toStdWString();
        const HRESULT shown =
            pages.cElems == 0 ? E_FAIL
                              : OleCreatePropertyFrame(
                                    reinterpret_cast<HWND>(window), 0, 0, name.c_str(), 1, &object,
                                    pages.cElems, pages.pElems, LOCALE_USER_DEFAULT, 0, nullptr);
        CoTaskMemFree(pages.pElems);
        return SUCCEEDED(shown);
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
