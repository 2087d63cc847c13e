#pragma once

#include <QtGlobal>

namespace Foreground {

// Lets that program bring a window of its own to the front, where the system allows it only to the
// one that the user has just started: this one.
void HandTo(qint64 process);

}  // namespace Foreground
