#pragma once

#include "platform/capture_devices.h"

#include <utility>

// Something that can be adjusted in an installed camera: brightness, contrast, focus ...
struct CameraControl {
    enum class Form { Number, Switch, Menu };

    QString Id;    // stays the same from boot to boot, and on each system where it can; no '|'
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
    // The windows that a camera's driver may bring along.
    enum class OwnPage { Format, Picture };

    // What the camera can adjust, with the present values; empty when it cannot be asked.
    [[nodiscard]] virtual QList<CameraControl> List(const CaptureDevice& device) const = 0;
    // False when the camera does not take the value now.
    [[nodiscard]] virtual bool Set(const CaptureDevice& device,
                                   const CameraControlValue& value) = 0;

    // Shows the driver's own window in front of the window with this native handle, and returns
    // when it is closed. False, at once, where drivers have none: the program shows its own then.
    [[nodiscard]] virtual bool ShowOwnPage(const CaptureDevice&, OwnPage, quintptr) {
        return false;
    }
};
