#include "platform/system_clock.h"

#include "platform/windows/system.h"

// The performance counter goes on while the machine sleeps, as GetTickCount64 does, which counts in
// steps of up to 16 ms: too coarse for pictures every 200 ms.
qint64 MachineMilliseconds() {
    static const qint64 perSecond = [] {
        LARGE_INTEGER frequency{};
        QueryPerformanceFrequency(&frequency);
        return frequency.QuadPart;
    }();
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    return now.QuadPart / perSecond * 1000 + now.QuadPart % perSecond * 1000 / perSecond;
}
