#pragma once

#include "ui/settings/settings_window.h"

// Has the system start the program by itself from now on, or no longer; tells the operator when it
// does not do so.
void ApplyAutostart(const SettingsWindow::Surroundings& around, bool on);
