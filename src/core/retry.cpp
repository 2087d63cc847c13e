#include "core/retry.h"

#include <algorithm>

void Retry::Failed(qint64 began, qint64 now, qint64 most) {
    const bool first = Fresh();
    // A short pause, of a trouble on this machine, must not be where those of a server begin.
    pause = std::min(std::max(FirstPause, 2 * pause), most);
    next = first ? now + pause : std::max(began + pause, now + std::min(FirstPause, most));
}
