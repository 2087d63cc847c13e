#pragma once

#include <QString>

// The folder of the working files where the settings name none. Each has a separator at its end and
// may have to be made.
namespace WorkFolder {

// In the user's place in memory, each program folder's own; empty where the system has no such
// place.
[[nodiscard]] QString InMemory(const QString& programFolder);

// The folder "work" below the program folder.
[[nodiscard]] QString OnDisk(const QString& programFolder);

// The one in memory if it is there or has room, because bitmaps every second would wear a memory
// card out; else the one on the disk.
[[nodiscard]] QString Usual(const QString& programFolder);

// Removes what the program leaves in a working folder, and the folder when nothing else is in it.
void Remove(const QString& folder);

}  // namespace WorkFolder
