#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class VideoDevice;

// A picture format that a camera offers.
struct CaptureFormat {
    int Width = 0;             // pixels
    int Height = 0;            // pixels
    double Rate = 0;           // pictures per second, the highest at this size; 0 when not known
    QString PixelFormat;       // FFmpeg's name for it ("yuyv422", "mjpeg", "h264")
    bool Compressed = false;   // decoded before use
    QList<double> Rates = {};  // all that it offers at this size; empty when not known

    bool operator==(const CaptureFormat&) const = default;
};

// Opens the camera at an address in the format nearest to the one wanted, or in the one that it is
// set to. Returns null and sets error to a negative value of errno when that fails.
using VideoDeviceOpener = std::shared_ptr<VideoDevice> (*)(
    const QString& address, const std::optional<CaptureFormat>& wanted, int& error);

// A value for one of the things that can be adjusted in a camera, see CameraControl.
struct CameraControlValue {
    QString Id;
    int Value = 0;

    bool operator==(const CameraControlValue&) const = default;
};

// Gives a camera's driver values again that it has lost. Those that it does not take are left out.
// May be called on any thread.
using CameraAdjuster = void (*)(const QString& address, const QList<CameraControlValue>& values);

// An installed camera.
struct CaptureDevice {
    QString Name;        // as the driver names it; two devices may share it
    QString Connection;  // where it is plugged in (bus and port): tells devices of one name apart
    QString Input;       // FFmpeg's input device: "v4l2", "dshow"
    QString Address;     // what is opened now; changes from boot to boot
    VideoDeviceOpener Open = nullptr;  // this system's own way; without one FFmpeg opens it
    CameraAdjuster Adjust = nullptr;   // none where nothing can be adjusted

    bool operator==(const CaptureDevice&) const = default;
};

// The cameras of this machine.
class CaptureDevices : public QObject {
    Q_OBJECT

  public:
    // The cameras that can capture now, in an order that stays the same from boot to boot.
    [[nodiscard]] virtual QList<CaptureDevice> List() const = 0;
    // What the camera offers; empty when it cannot be asked (unplugged, in use).
    [[nodiscard]] virtual QList<CaptureFormat> Formats(const CaptureDevice& device) const = 0;

    // Whether the driver brings a window of its own along to choose the format in.
    [[nodiscard]] virtual bool HasOwnPages(const CaptureDevice&) const { return false; }
    // Shows it in front of the window with this native handle, beginning with the format that is
    // in force, and returns when it is closed: with the format chosen, or nothing when it was left
    // as it was. Pictures may be taken meanwhile; the camera keeps its format.
    [[nodiscard]] virtual std::optional<CaptureFormat> ShowOwnPages(
        const CaptureDevice&, const std::optional<CaptureFormat>& /*present*/, quintptr) const {
        return std::nullopt;
    }
};
