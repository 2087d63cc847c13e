#include "base/status_hub.h"

#include <algorithm>

bool StatusHub::InUse() const {
    return std::any_of(displays.begin(), displays.end(), [](auto* each) { return each->InUse(); });
}
