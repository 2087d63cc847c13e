#pragma once

#include "core/commands/surroundings.h"

// `stillpost --list-cameras`: the cameras by the names that the settings know (Treiber), installed
// ones with the formats that they offer, as CaptureFormat wants them.
[[nodiscard]] CommandStatus ListCameras(const CommandSurroundings& around);
