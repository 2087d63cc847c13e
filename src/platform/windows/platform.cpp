#include "platform/platform.h"

#include "platform/windows/capture_devices.h"
#include "platform/windows/dialer.h"
#include "platform/windows/online_state.h"
#include "platform/windows/sound.h"

Platform MakePlatform() {
    return {.Online = std::make_unique<WindowsOnlineState>(),
            .Dial = std::make_unique<WindowsDialer>(),
            .Cameras = MakeCaptureDevices(),
            .Sounds = std::make_unique<WindowsSound>()};
}
