#pragma once

#include "platform/capture_devices.h"

#include <memory>

// The cameras that the kernel's video interface (V4L2) offers.
[[nodiscard]] std::unique_ptr<CaptureDevices> MakeCaptureDevices();
