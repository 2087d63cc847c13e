#include "platform/windows/media_type.h"

#include <dvdmedia.h>

#include <algorithm>

namespace {

template <class Header>
PictureType PictureTypeIn(const AM_MEDIA_TYPE& type) {
    if (type.cbFormat < sizeof(Header)) return {};
    void* const details = type.pbFormat;
    auto* const header = static_cast<Header*>(details);
    return {&header->bmiHeader, &header->AvgTimePerFrame};
}

}  // namespace

void MediaTypeRelease::operator()(AM_MEDIA_TYPE* type) const {
    if (type->pUnk) type->pUnk->Release();
    CoTaskMemFree(type->pbFormat);
    CoTaskMemFree(type);
}

PictureType PictureTypeOf(const AM_MEDIA_TYPE& type) {
    if (type.majortype != MEDIATYPE_Video || !type.pbFormat) return {};
    if (type.formattype == FORMAT_VideoInfo) return PictureTypeIn<VIDEOINFOHEADER>(type);
    if (type.formattype == FORMAT_VideoInfo2) return PictureTypeIn<VIDEOINFOHEADER2>(type);
    return {};
}

std::vector<PinOffer> OffersOf(IAMStreamConfig& pin) {
    std::vector<PinOffer> offers;
    int count = 0;
    int size = 0;
    if (FAILED(pin.GetNumberOfCapabilities(&count, &size))) return offers;
    std::vector<BYTE> bytes(std::max<std::size_t>(sizeof(VIDEO_STREAM_CONFIG_CAPS),
                                                  static_cast<std::size_t>(std::max(size, 0))));
    for (int i = 0; i < count; ++i) {
        AM_MEDIA_TYPE* found = nullptr;
        if (pin.GetStreamCaps(i, &found, bytes.data()) != S_OK || !found) continue;
        PinOffer offer{.Type = MediaTypePtr(found)};
        if (!PictureTypeOf(*offer.Type).Picture) continue;
        std::copy_n(bytes.begin(), sizeof offer.Abilities,
                    reinterpret_cast<BYTE*>(&offer.Abilities));
        offers.push_back(std::move(offer));
    }
    return offers;
}
