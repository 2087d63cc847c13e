#pragma once

#include "platform/capture_devices.h"

#include <memory>

// The cameras that DirectShow offers. FFmpeg opens them.
[[nodiscard]] std::unique_ptr<CaptureDevices> MakeCaptureDevices();
