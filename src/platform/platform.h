#pragma once

#include "platform/autostart_entry.h"
#include "platform/camera_controls.h"
#include "platform/capture_devices.h"
#include "platform/dialer.h"
#include "platform/online_state.h"
#include "platform/sound.h"

#include <memory>

// Everything that differs from system to system, in one hand.
struct Platform {
    std::unique_ptr<OnlineState> Online;
    std::unique_ptr<Dialer> Dial;
    // Also held by whoever asks it on another thread, which may hang beyond the platform.
    std::shared_ptr<CaptureDevices> Cameras;
    std::unique_ptr<CameraControls> Controls;
    std::unique_ptr<Sound> Sounds;
    std::unique_ptr<AutostartEntry> Autostart;
};

// The services of the system that the program runs on.
[[nodiscard]] Platform MakePlatform();
