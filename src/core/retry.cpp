#include "core/retry.h"

#include <algorithm>

void Retry::Failed(qint64 began, qint64 now, qint64 most) {
    const bool first = pause == 0;
    pause = std::min(first ? FirstPause : 2 * pause, most);
    next = first ? now + pause : std::max(began + pause, now + std::min(FirstPause, most));
}
