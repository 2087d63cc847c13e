#pragma once

#include "platform/camera_controls.h"

#include <memory>

// What the drivers of DirectShow let adjust in a camera, and the window that they bring along.
[[nodiscard]] std::unique_ptr<CameraControls> MakeCameraControls();

// See CameraAdjuster; address is the one that FFmpeg's "dshow" opens.
void AdjustDirectShowCamera(const QString& address, const QList<CameraControlValue>& values);
