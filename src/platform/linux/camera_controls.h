#pragma once

#include "platform/camera_controls.h"

#include <memory>

// What the kernel's video interface (V4L2) lets adjust in a camera: the picture and the camera
// itself, no sound and nothing of the driver's inner works.
[[nodiscard]] std::unique_ptr<CameraControls> MakeCameraControls();

// See CameraAdjuster; address is the camera's node.
void AdjustV4l2Camera(const QString& address, const QList<CameraControlValue>& values);
