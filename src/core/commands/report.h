#pragma once

#include "core/commands/surroundings.h"

// `stillpost --report`: what somebody has to know who shall help, without passwords.
[[nodiscard]] CommandStatus Report(const CommandSurroundings& around);
