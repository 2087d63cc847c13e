#pragma once

#include "platform/windows/com.h"

#include <QString>

#include <functional>

// After the system's header.
#include <dshow.h>

// DirectShow's list of cameras. A moniker is a camera that nothing has been loaded for yet; its
// filter is the driver at work.

// Calls `each` for every camera until it returns false.
void ForEachCamera(const std::function<bool(IMoniker& camera)>& each);

// The address that FFmpeg's "dshow" opens, made of the name that no other device has. Empty when
// the system does not tell it.
[[nodiscard]] QString AddressOf(IMoniker& camera);

// The driver of the camera at this address, null when it is not there. The thread must be set up
// for COM as long as it is held.
[[nodiscard]] ComPtr<IBaseFilter> FilterAt(const QString& address);
