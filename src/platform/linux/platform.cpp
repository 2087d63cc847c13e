#include "platform/platform.h"

#include "platform/linux/autostart_entry.h"
#include "platform/linux/camera_controls.h"
#include "platform/linux/capture_devices.h"
#include "platform/linux/dialer.h"
#include "platform/linux/online_state.h"
#include "platform/linux/sound.h"

#include <QStandardPaths>

Platform MakePlatform() {
    const QDBusConnection bus = QDBusConnection::systemBus();
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {.Online = std::make_unique<LinuxOnlineState>(bus),
            .Dial = std::make_unique<LinuxDialer>(bus),
            .Cameras = MakeCaptureDevices(),
            .Controls = MakeCameraControls(),
            .Sounds = std::make_unique<LinuxSound>(),
            .Autostart = std::make_unique<LinuxAutostartEntry>(config)};
}
