#pragma once

#include "platform/capture_devices.h"
#include "platform/windows/com.h"

// After the system's header.
#include <dshow.h>

#include <vector>

struct PinOffer;

// The pins that deliver pictures as they are filmed.
[[nodiscard]] std::vector<ComPtr<IPin>> CapturePinsOf(IBaseFilter& filter);

// What a camera's filter offers on them.
[[nodiscard]] QList<CaptureFormat> FormatsOf(IBaseFilter& filter);

// One entry of an offer: a picture's header and the times from one picture to the next, in units of
// 100 ns (0: not known). Its PixelFormat is empty when FFmpeg cannot open it.
[[nodiscard]] CaptureFormat FormatOf(const BITMAPINFOHEADER& picture, qint64 shortest,
                                     qint64 longest);
[[nodiscard]] CaptureFormat FormatOf(const PinOffer& offer);

// Drivers may have an entry for each rate of a format, and for each form of header.
void AddFormat(QList<CaptureFormat>& formats, const CaptureFormat& format);
