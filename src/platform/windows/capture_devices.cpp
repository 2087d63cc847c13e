#include "platform/windows/capture_devices.h"

#include "platform/windows/camera_controls.h"
#include "platform/windows/camera_monikers.h"
#include "platform/windows/capture_filter.h"
#include "platform/windows/format_page.h"
#include "platform/windows/property_pages.h"

extern "C" {
#include <libavdevice/avdevice.h>
}

#include <algorithm>
#include <optional>
#include <tuple>

namespace {

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

std::optional<CaptureDevice> Camera(IMoniker& device) {
    void* found = nullptr;
    if (device.BindToStorage(nullptr, nullptr, __uuidof(IPropertyBag), &found) != S_OK)
        return std::nullopt;
    const ComPtr<IPropertyBag> properties(static_cast<IPropertyBag*>(found));
    const QString address = AddressOf(device);
    const QString name = Property(*properties, L"FriendlyName");
    if (address.isEmpty() || name.isEmpty()) return std::nullopt;
    // Cameras that are programs have no path.
    const QString path = Property(*properties, L"DevicePath");
    return CaptureDevice{.Name = name,
                         .Connection = path.isEmpty() ? address : path,
                         .Input = QStringLiteral("dshow"),
                         .Address = address,
                         .Open = nullptr,
                         .Adjust = AdjustDirectShowCamera};
}

// The driver's capture pin that has a page of its own, null when none has.
ComPtr<IPin> PinWithPage(IBaseFilter& filter) {
    for (auto& pin : CapturePinsOf(filter))
        if (HasFormatPage(*pin)) return std::move(pin);
    return nullptr;
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
        const ComPtr<IBaseFilter> filter = FilterAt(device.Address);
        return filter ? FormatsOf(*filter) : QList<CaptureFormat>();
    }

    bool HasOwnPages(const CaptureDevice& device) const override {
        const ComThread thread;
        const ComPtr<IBaseFilter> filter = FilterAt(device.Address);
        return filter && PinWithPage(*filter);
    }

    std::optional<CaptureFormat> ShowOwnPages(const CaptureDevice& device,
                                              const std::optional<CaptureFormat>& present,
                                              quintptr window) const override {
        const ComThread thread;
        // A filter of its own, which delivers nothing: the one that does goes on meanwhile.
        const ComPtr<IBaseFilter> filter = FilterAt(device.Address);
        const ComPtr<IPin> pin = filter ? PinWithPage(*filter) : nullptr;
        if (!pin) return std::nullopt;
        return ChosenFormat(*pin, present, [&] { ShowPropertyPages(*pin, device.Name, window); });
    }
};

}  // namespace

std::unique_ptr<CaptureDevices> MakeCaptureDevices() {
    return std::make_unique<DirectShowDevices>();
}
