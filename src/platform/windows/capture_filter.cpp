#include "platform/windows/capture_filter.h"

#include "platform/frame_rates.h"
#include "platform/windows/media_type.h"

#include <ks.h>
#include <ksproxy.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <tuple>

namespace {

constexpr DWORD Code(const char (&text)[5]) {
    DWORD code = 0;
    for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<uchar>(text[i]);
    return code;
}

struct PixelFormatName {
    DWORD Compression;  // the picture header's
    WORD Bits;          // per pixel; 0: whatever it says
    const char* Name;   // FFmpeg's
    bool Compressed;
};

constexpr std::array names{
    PixelFormatName{BI_RGB, 24, "bgr24", false},
    PixelFormatName{BI_RGB, 32, "bgr0", false},
    PixelFormatName{BI_RGB, 16, "rgb555le", false},
    PixelFormatName{Code("YUY2"), 0, "yuyv422", false},
    PixelFormatName{Code("YUYV"), 0, "yuyv422", false},
    PixelFormatName{Code("UYVY"), 0, "uyvy422", false},
    PixelFormatName{Code("HDYC"), 0, "uyvy422", false},
    PixelFormatName{Code("NV12"), 0, "nv12", false},
    PixelFormatName{Code("I420"), 0, "yuv420p", false},
    PixelFormatName{Code("IYUV"), 0, "yuv420p", false},
    PixelFormatName{Code("YV12"), 0, "yuv420p", false},
    PixelFormatName{Code("Y800"), 0, "gray", false},
    PixelFormatName{Code("MJPG"), 0, "mjpeg", true},
    PixelFormatName{Code("H264"), 0, "h264", true},
    PixelFormatName{Code("dvsd"), 0, "dvvideo", true},
};

// Cameras have pins for previews and stills besides, which FFmpeg leaves alone.
bool IsCapturePin(IPin& pin) {
    PIN_DIRECTION direction = PINDIR_INPUT;
    if (FAILED(pin.QueryDirection(&direction)) || direction != PINDIR_OUTPUT) return false;
    const auto properties = ComQuery<IKsPropertySet>(pin);
    if (!properties) return false;
    GUID category{};
    DWORD size = 0;
    const HRESULT result = properties->Get(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, nullptr, 0,
                                           &category, sizeof category, &size);
    return SUCCEEDED(result) && category == PIN_CATEGORY_CAPTURE;
}

}  // namespace

CaptureFormat FormatOf(const BITMAPINFOHEADER& picture, qint64 shortest, qint64 longest) {
    CaptureFormat format{.Width = static_cast<int>(picture.biWidth),
                         .Height = std::abs(static_cast<int>(picture.biHeight)),
                         .PixelFormat = {}};
    // Rounded to within: asked for more than its highest rate, a camera refuses.
    if (shortest > 0) {
        format.Rate = std::floor(1e10 / static_cast<double>(shortest)) / 1000;
        const qint64 slowest = std::max(shortest, longest);
        const double lowest = std::ceil(1e10 / static_cast<double>(slowest)) / 1000;
        format.Rates = RatesBetween(lowest, format.Rate);
    }
    for (const PixelFormatName& name : names) {
        if (name.Compression != picture.biCompression) continue;
        if (name.Bits != 0 && name.Bits != picture.biBitCount) continue;
        format.PixelFormat = QString::fromLatin1(name.Name);
        format.Compressed = name.Compressed;
        break;
    }
    return format;
}

void AddFormat(QList<CaptureFormat>& formats, const CaptureFormat& format) {
    if (format.PixelFormat.isEmpty()) return;
    const auto same = [](const CaptureFormat& f) {
        return std::tuple(f.Width, f.Height, f.PixelFormat);
    };
    const auto known = std::ranges::find(formats, same(format), same);
    if (known == formats.end()) {
        formats << format;
        return;
    }
    known->Rate = std::max(known->Rate, format.Rate);
    for (const double rate : format.Rates)
        if (!known->Rates.contains(rate)) known->Rates << rate;
}

CaptureFormat FormatOf(const PinOffer& offer) {
    return FormatOf(*PictureTypeOf(*offer.Type).Picture, offer.Abilities.MinFrameInterval,
                    offer.Abilities.MaxFrameInterval);
}

std::vector<ComPtr<IPin>> CapturePinsOf(IBaseFilter& filter) {
    std::vector<ComPtr<IPin>> capturing;
    IEnumPins* found = nullptr;
    if (filter.EnumPins(&found) != S_OK) return capturing;
    const ComPtr<IEnumPins> pins(found);
    IPin* next = nullptr;
    while (pins->Next(1, &next, nullptr) == S_OK) {
        ComPtr<IPin> pin(next);
        if (IsCapturePin(*pin)) capturing.push_back(std::move(pin));
    }
    return capturing;
}

QList<CaptureFormat> FormatsOf(IBaseFilter& filter) {
    QList<CaptureFormat> formats;
    for (const auto& pin : CapturePinsOf(filter)) {
        const auto config = ComQuery<IAMStreamConfig>(*pin);
        if (!config) continue;
        for (const PinOffer& offer : OffersOf(*config)) AddFormat(formats, FormatOf(offer));
    }
    return formats;
}
