#include "platform/windows/capture_devices.h"

#include "platform/windows/capture_filter.h"

extern "C" {
#include <libavdevice/avdevice.h>
}

#include <algorithm>
#include <functional>
#include <optional>
#include <tuple>

namespace {

const QString addressPrefix = QStringLiteral("video=");

// A text among a device's properties; empty when it has none of this name.
QString Property(IPropertyBag& properties, const wchar_t* name) {
    VARIANT value;
    VariantInit(&value);
    QString text;
    if (properties.Read(name, &value, nullptr) == S_OK && value.vt == VT_BSTR && value.bstrVal)
        text = QString::fromWCharArray(value.bstrVal);
    VariantClear(&value);
    return text;
}

// The name that no other device has, in the form that FFmpeg's "dshow" knows it by: a colon
// separates there.
QString UniqueName(IMoniker& device) {
    IBindCtx* found = nullptr;
    if (CreateBindCtx(0, &found) != S_OK) return {};
    const ComPtr<IBindCtx> context(found);
    LPOLESTR text = nullptr;
    if (device.GetDisplayName(context.get(), nullptr, &text) != S_OK) return {};
    const QString name = QString::fromWCharArray(text);
    CoTaskMemFree(text);
    return QString(name).replace(u':', u'_');
}

std::optional<CaptureDevice> Camera(IMoniker& device) {
    void* found = nullptr;
    if (device.BindToStorage(nullptr, nullptr, __uuidof(IPropertyBag), &found) != S_OK)
        return std::nullopt;
    const ComPtr<IPropertyBag> properties(static_cast<IPropertyBag*>(found));
    const QString unique = UniqueName(device);
    const QString name = Property(*properties, L"FriendlyName");
    if (unique.isEmpty() || name.isEmpty()) return std::nullopt;
    // Cameras that are programs have no path.
    const QString path = Property(*properties, L"DevicePath");
    return CaptureDevice{.Name = name,
                         .Connection = path.isEmpty() ? unique : path,
                         .Input = QStringLiteral("dshow"),
                         .Address = addressPrefix + unique,
                         .Open = nullptr};
}

// Calls `each` for every camera until it returns false.
void ForEachCamera(const std::function<bool(IMoniker& device)>& each) {
    void* found = nullptr;
    if (FAILED(CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(ICreateDevEnum), &found)))
        return;
    const ComPtr<ICreateDevEnum> system(static_cast<ICreateDevEnum*>(found));
    IEnumMoniker* list = nullptr;
    if (system->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, &list, 0) != S_OK) return;
    const ComPtr<IEnumMoniker> devices(list);
    IMoniker* next = nullptr;
    while (devices->Next(1, &next, nullptr) == S_OK) {
        const ComPtr<IMoniker> device(next);
        if (!each(*device)) return;
    }
}

class DirectShowDevices : public CaptureDevices {
  public:
    DirectShowDevices() {
        // FFmpeg finds its inputs for cameras only after this.
        avdevice_register_all();
    }

    QList<CaptureDevice> List() const override {
        const ComThread thread;
        QList<CaptureDevice> cameras;
        ForEachCamera([&cameras](IMoniker& device) {
            if (const auto camera = Camera(device)) cameras << *camera;
            return true;
        });
        // The system lists them in the order in which they were plugged in.
        std::ranges::sort(cameras, [](const auto& a, const auto& b) {
            return std::tie(a.Connection, a.Name) < std::tie(b.Connection, b.Name);
        });
        return cameras;
    }

    QList<CaptureFormat> Formats(const CaptureDevice& device) const override {
        const ComThread thread;
        QList<CaptureFormat> formats;
        ForEachCamera([&](IMoniker& candidate) {
            if (addressPrefix + UniqueName(candidate) != device.Address) return true;
            void* found = nullptr;
            const HRESULT bound =
                candidate.BindToObject(nullptr, nullptr, __uuidof(IBaseFilter), &found);
            const ComPtr<IBaseFilter> filter(static_cast<IBaseFilter*>(found));
            if (bound == S_OK && filter) formats = FormatsOf(*filter);
            return false;
        });
        return formats;
    }
};

}  // namespace

std::unique_ptr<CaptureDevices> MakeCaptureDevices() {
    return std::make_unique<DirectShowDevices>();
}
