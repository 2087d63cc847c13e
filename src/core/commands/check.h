#pragma once

#include "core/commands/surroundings.h"

// `stillpost --check`: says what is wrong in the settings file, takes a picture with the camera,
// and tries the server with a small file of its own. Publishes nothing and changes nothing.
// running: another Stillpost works with the folder, and may have the camera in its hands.
[[nodiscard]] CommandStatus Check(const CommandSurroundings& around, bool running);
