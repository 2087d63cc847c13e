#pragma once

#include "platform/capture_devices.h"
#include "platform/windows/com.h"

// After the system's header.
#include <dshow.h>

// What a camera's filter offers on its capture pin.
[[nodiscard]] QList<CaptureFormat> FormatsOf(IBaseFilter& filter);

// One entry of an offer: a picture's header and the times from one picture to the next, in units of
// 100 ns (0: not known). Its PixelFormat is empty when FFmpeg cannot open it.
[[nodiscard]] CaptureFormat FormatOf(const BITMAPINFOHEADER& picture, qint64 shortest,
                                     qint64 longest);

// Drivers may have an entry for each rate of a format, and for each form of header.
void AddFormat(QList<CaptureFormat>& formats, const CaptureFormat& format);
