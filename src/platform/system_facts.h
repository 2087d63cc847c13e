#pragma once

#include <QStringList>

// What the system tells of the machine, as lines for people who look for a fault. Any of it may
// hang: to be asked on threads of their own.
namespace SystemFacts {

[[nodiscard]] QStringList Processor();
[[nodiscard]] QStringList Memory();
[[nodiscard]] QStringList Graphics();
[[nodiscard]] QStringList Sound();
// The names of what starts when this user logs in, and what the program's own entry says. own: its
// place, see AutostartEntry.
[[nodiscard]] QStringList Autostart(const QString& own);
// Programs that have a camera in their hands, as far as the system tells.
[[nodiscard]] QStringList CameraUsers();

// The paths of the drives; none of them is touched.
[[nodiscard]] QStringList Drives();

}  // namespace SystemFacts
