#include "platform/foreground.h"

#include "platform/windows/system.h"

void Foreground::HandTo(qint64 process) {
    AllowSetForegroundWindow(static_cast<DWORD>(process));
}
