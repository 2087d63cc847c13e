#include "core/commands/list_cameras.h"

#include "camera/camera_list.h"
#include "core/settings/load_settings.h"
#include "platform/platform.h"
#include "texts/texts.h"

namespace {

QString TextOf(const CaptureFormat& format) {
    const QString size = QStringLiteral("%1x%2").arg(format.Width).arg(format.Height);
    const QString rate =
        format.Rate > 0 ? QStringLiteral("@%1").arg(format.Rate, 0, 'g', 4) : QString();
    return "  " + (size + rate).leftJustified(16) + format.PixelFormat;
}

}  // namespace

CommandStatus ListCameras(const CommandSurroundings& around) {
    const QString file = SettingsFileIn(around.Folder);
    const Texts words(LanguageIn(file).value_or(Texts::Language::English));
    const CaptureDevices& devices = *around.System.Cameras;
    const QList<Camera> cameras = ListCameras(devices.List(), LoadSettings(file).Cameras);
    for (const Camera& camera : cameras) {
        const bool installed = camera.Kind == CaptureKind::Device;
        const QString kind =
            words.Get("ListCameras", installed ? QString("Installed") : "WrittenDown");
        // Not the address of one that is written down: a password may be in it.
        around.Print(camera.Name + " (" + kind + ")");
        if (!installed) continue;
        const QList<CaptureFormat> formats = devices.Formats(camera.Device);
        for (const CaptureFormat& format : formats) around.Print(TextOf(format));
        if (formats.isEmpty()) around.Print("  " + words.Get("ListCameras", "NoFormats"));
    }
    if (!cameras.isEmpty()) return CommandStatus::Fine;
    around.Print(words.Get("ListCameras", "None"));
    return CommandStatus::Warnings;
}
