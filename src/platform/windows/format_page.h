#pragma once

#include "platform/capture_devices.h"
#include "platform/windows/com.h"

#include <functional>

// The page for the picture format that drivers bring along for a camera's capture pin.

// Whether the pin has one, and tells what was chosen in it.
[[nodiscard]] bool HasFormatPage(IUnknown& pin);

// What is chosen on the pin while `show` shows its page; nothing when it was left as it was. The
// page begins with `present` where the pin takes that.
[[nodiscard]] std::optional<CaptureFormat> ChosenFormat(IUnknown& pin,
                                                        const std::optional<CaptureFormat>& present,
                                                        const std::function<void()>& show);
