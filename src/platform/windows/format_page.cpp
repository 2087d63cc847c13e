#include "platform/windows/format_page.h"

#include "platform/windows/capture_filter.h"
#include "platform/windows/media_type.h"
#include "platform/windows/property_pages.h"

#include <algorithm>
#include <cmath>

namespace {

bool Includes(const CaptureFormat& offer, const CaptureFormat& wanted) {
    return offer.Width == wanted.Width && offer.Height == wanted.Height &&
           offer.PixelFormat == wanted.PixelFormat &&
           (offer.Rates.isEmpty() || offer.Rates.contains(wanted.Rate));
}

void SetFormat(IAMStreamConfig& pin, const CaptureFormat& wanted) {
    for (const PinOffer& offer : OffersOf(pin)) {
        const CaptureFormat format = FormatOf(offer);
        if (!Includes(format, wanted)) continue;
        const qint64 shortest = offer.Abilities.MinFrameInterval;
        // Rates are rounded.
        if (!format.Rates.isEmpty())
            *PictureTypeOf(*offer.Type).Interval =
                std::clamp<qint64>(std::llround(1e7 / wanted.Rate), shortest,
                                   std::max<qint64>(shortest, offer.Abilities.MaxFrameInterval));
        if (SUCCEEDED(pin.SetFormat(offer.Type.get()))) return;
    }
}

std::optional<CaptureFormat> PresentFormat(IAMStreamConfig& pin) {
    AM_MEDIA_TYPE* found = nullptr;
    if (pin.GetFormat(&found) != S_OK || !found) return std::nullopt;
    const MediaTypePtr type(found);
    const PictureType now = PictureTypeOf(*type);
    if (!now.Picture) return std::nullopt;
    return FormatOf(*now.Picture, *now.Interval, *now.Interval);
}

}  // namespace

bool HasFormatPage(IUnknown& pin) {
    return HasPropertyPages(pin) && ComQuery<IAMStreamConfig>(pin);
}

std::optional<CaptureFormat> ChosenFormat(IUnknown& pin,
                                          const std::optional<CaptureFormat>& present,
                                          const std::function<void()>& show) {
    const auto config = ComQuery<IAMStreamConfig>(pin);
    if (!config) return std::nullopt;
    if (present) SetFormat(*config, *present);
    const auto before = PresentFormat(*config);
    show();
    const auto after = PresentFormat(*config);
    return after == before ? std::nullopt : after;
}
