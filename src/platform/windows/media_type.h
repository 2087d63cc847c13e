#pragma once

#include "platform/windows/com.h"

// After the system's header.
#include <dshow.h>

#include <vector>

// How a pin describes the pictures that it delivers.

struct MediaTypeRelease {
    void operator()(AM_MEDIA_TYPE* type) const;
};
using MediaTypePtr = std::unique_ptr<AM_MEDIA_TYPE, MediaTypeRelease>;

// The parts of a media type that matter; both are null when it describes no picture.
struct PictureType {
    BITMAPINFOHEADER* Picture = nullptr;
    REFERENCE_TIME* Interval = nullptr;  // from one picture to the next, 100 ns; 0: not known
};
[[nodiscard]] PictureType PictureTypeOf(const AM_MEDIA_TYPE& type);

// One of the descriptions that a pin can be set to; each is of a picture.
struct PinOffer {
    MediaTypePtr Type;
    VIDEO_STREAM_CONFIG_CAPS Abilities{};
};
[[nodiscard]] std::vector<PinOffer> OffersOf(IAMStreamConfig& pin);
