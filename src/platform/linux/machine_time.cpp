#include "platform/system_clock.h"

#include <ctime>

qint64 MachineMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1'000'000;
}
