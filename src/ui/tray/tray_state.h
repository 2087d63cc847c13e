#pragma once

#include "ui/tray/run_figures.h"

#include <QIcon>

// What the tray icon tells.
struct TrayState {
    RunState Is = RunState::Stopped;
    int Pictures = 0;  // published
    bool Online = false;
};

// The icon's name: "running", "paused" (also outside the hours), "stopped", or "offline" while the
// offline picture is shown or a run waits for the line.
[[nodiscard]] QString TrayIconName(const TrayState& state);

// "Stillpost: running, 312 pictures, online" in the language in use.
[[nodiscard]] QString TrayTooltip(const Texts& texts, const TrayState& state);

// A coloured disc, for a program folder without icons.
[[nodiscard]] QIcon PlainTrayIcon(const QString& name);
