#pragma once

#include "platform/capture_devices.h"

#include <algorithm>
#include <utility>

// Something that can be adjusted in an installed camera: brightness, contrast, focus ...
struct CameraControl {
    enum class Form { Number, Switch, Menu };

    // Stays the same from boot to boot; the same on two systems only if the values mean the same.
    // No '|'.
    QString Id;
    QString Name;  // as the driver names it
    Form Kind = Form::Number;
    int Least = 0;
    int Most = 1;
    int Step = 1;
    int Default = 0;
    QList<std::pair<int, QString>> Choices = {};  // of a menu: value and name
    int Value = 0;
    bool Adjustable = true;  // false while another control rules this one

    bool operator==(const CameraControl&) const = default;
};

// Adjusts the pictures of installed cameras. Everything works while the camera is open as well.
// Values live in the driver: they are lost when the camera is pulled out or the machine restarted.
class CameraControls : public QObject {
    Q_OBJECT

  public:
    // What the camera can adjust, with the present values; empty when it cannot be asked.
    [[nodiscard]] virtual QList<CameraControl> List(const CaptureDevice& device) const = 0;
    // The ids that every camera may have, for which the windows have words; others are a driver's.
    [[nodiscard]] virtual QStringList KnownIds() const { return {}; }
    // False when the camera does not take the value now.
    [[nodiscard]] virtual bool Set(const CaptureDevice& device,
                                   const CameraControlValue& value) = 0;

    // Whether the driver brings a window of its own along.
    [[nodiscard]] virtual bool HasOwnPages(const CaptureDevice&) const { return false; }
    // Shows it in front of the window with this native handle, and returns when it is closed.
    virtual void ShowOwnPages(const CaptureDevice&, quintptr) {}
};

// Gives a camera several values by `set`, which returns false when the camera refuses one now.
template <class Set>
void SetCameraValues(QList<CameraControlValue> values, Set set) {
    values.removeIf(set);
    // A value is refused as long as its automatic is on, and that may have stood behind it.
    std::ranges::for_each(values, set);
}
