#pragma once

#include <QString>

// The folder of this user's that the system keeps in memory, for files that need not outlive the
// session, at whose end it may vanish. Empty where there is none, or it is somebody else's.
[[nodiscard]] QString MemoryFolder();
