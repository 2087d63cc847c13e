#pragma once

#include "platform/capture_devices.h"

#include <QStringList>

// What the operator has adjusted in cameras, as the settings keep it: a line CAMERA|CONTROL|VALUE
// for each control that is not as the driver has it by itself. Cameras forget their adjustments
// when they are pulled out; they get them again each time they are opened.
namespace CameraAdjustments {

// Those of the camera of this name, in the order of the lines. Other lines do not count.
[[nodiscard]] QList<CameraControlValue> Of(const QStringList& lines, const QString& camera);

// The lines with those of this camera replaced.
[[nodiscard]] QStringList Replaced(const QStringList& lines, const QString& camera,
                                   const QList<CameraControlValue>& values);

}  // namespace CameraAdjustments
