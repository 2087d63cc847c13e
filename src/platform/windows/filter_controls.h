#pragma once

#include "platform/camera_controls.h"
#include "platform/windows/com.h"

// What a camera's filter lets adjust: IAMVideoProcAmp has the picture, IAMCameraControl the camera
// itself. Both keep the automatic of a control beside its value; here it is a control of its own,
// as on other systems, and rules the value while it is on.
namespace FilterControls {

// With the present values; what the driver does not know is left out.
[[nodiscard]] QList<CameraControl> List(IUnknown& filter);

// All ids that there are.
[[nodiscard]] QStringList KnownIds();

// False when the driver does not take the value now.
[[nodiscard]] bool Set(IUnknown& filter, const CameraControlValue& value);

}  // namespace FilterControls
