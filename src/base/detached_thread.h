#pragma once

#include <functional>

// Starts a thread that nobody waits for: it ends by itself. Throws std::system_error when none can
// be started.
void StartDetached(std::function<void()> work);
