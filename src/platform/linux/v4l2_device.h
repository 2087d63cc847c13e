#pragma once

#include "platform/video_device.h"

// Opens a node of the kernel's video interface and starts the stream; see VideoDeviceOpener.
// FFmpeg's own input device maps as many buffers as the driver gives, over a hundred megabytes for
// large pictures; this one makes do with four.
[[nodiscard]] std::shared_ptr<VideoDevice> OpenV4l2Device(
    const QString& address, const std::optional<CaptureFormat>& wanted, int& error);
