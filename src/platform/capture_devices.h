#pragma once

#include <QList>
#include <QObject>
#include <QString>

// An installed camera.
struct CaptureDevice {
    QString Name;        // as the driver names it; two devices may share it
    QString Connection;  // where it is plugged in (bus and port): tells devices of one name apart
    QString Input;       // FFmpeg's input device: "v4l2", "dshow"
    QString Address;     // what FFmpeg opens now; changes from boot to boot

    bool operator==(const CaptureDevice&) const = default;
};

// A picture format that a camera offers.
struct CaptureFormat {
    int Width = 0;            // pixels
    int Height = 0;           // pixels
    double Rate = 0;          // pictures per second, the highest at this size; 0 when not known
    QString PixelFormat;      // FFmpeg's name for it ("yuyv422", "mjpeg", "h264")
    bool Compressed = false;  // decoded before use

    bool operator==(const CaptureFormat&) const = default;
};

// The cameras of this machine.
class CaptureDevices : public QObject {
    Q_OBJECT

  public:
    // The cameras that can capture now, in an order that stays the same from boot to boot.
    [[nodiscard]] virtual QList<CaptureDevice> List() const = 0;
    // What the camera offers; empty when it cannot be asked (unplugged, in use).
    [[nodiscard]] virtual QList<CaptureFormat> Formats(const CaptureDevice& device) const = 0;
};
