#pragma once

#include "platform/windows/com.h"

#include <QString>

// The pages that a driver brings along for one of its objects.

[[nodiscard]] bool HasPropertyPages(IUnknown& object);

// Shows them in front of the window with this native handle, and returns when they are closed.
void ShowPropertyPages(IUnknown& object, const QString& title, quintptr window);
