#include "platform/platform.h"

#include "platform/windows/autostart_entry.h"
#include "platform/windows/camera_controls.h"
#include "platform/windows/capture_devices.h"
#include "platform/windows/dialer.h"
#include "platform/windows/online_state.h"
#include "platform/windows/sound.h"

Platform MakePlatform() {
    return {.Online = std::make_unique<WindowsOnlineState>(),
            .Dial = std::make_unique<WindowsDialer>(),
            .Cameras = MakeCaptureDevices(),
            .Controls = MakeCameraControls(),
            .Sounds = std::make_unique<WindowsSound>(),
            .Autostart = std::make_unique<WindowsAutostartEntry>()};
}
