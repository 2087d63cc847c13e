#pragma once

#include "platform/capture_devices.h"

#include <QString>

#include <optional>

// A picture format as it is asked for in the settings.
struct FormatWish {
    int Width = 0;    // pixels
    int Height = 0;   // pixels
    double Rate = 0;  // pictures per second; 0: no matter which

    bool operator==(const FormatWish&) const = default;
};

// "WIDTHxHEIGHT" or "WIDTHxHEIGHT@FPS"; nothing for anything else.
[[nodiscard]] std::optional<FormatWish> ParseFormatWish(const QString& text);

// The picture format to ask a camera for. Rate 0 leaves the rate to the camera.
// offered: what the camera lists; asked: "WIDTHxHEIGHT" or "WIDTHxHEIGHT@FPS", or anything else for
// the largest size up to 1920x1080 at five pictures a second or more, and fifteen of them. A size
// or a rate that is not offered gives the nearest one. Of formats of one size those come first that
// reach five pictures a second (or the rate asked for), and of these the one that costs least: raw
// pictures up to fifteen a second, JPEG, more raw pictures, other codecs. Nothing when nothing is
// offered and nothing was asked for.
[[nodiscard]] std::optional<CaptureFormat> ChooseCaptureFormat(const QList<CaptureFormat>& offered,
                                                               const QString& asked);
