#pragma once

#include <QString>

#include <optional>

// A second camera is a second program with a program folder of its own.
namespace AnotherCamera {

// The name as a folder can have it on every system; "camera" when nothing of it can stay.
[[nodiscard]] QString FolderName(const QString& name);

// Makes the folder, below "cameras" in the folder of the first program, for a camera of that name:
// with a copy of the settings, but for the camera itself, the start by itself, and the places of
// pictures that two programs must not share; and with what belongs to the settings that stay.
// Returns its full path; nothing when it cannot be written.
[[nodiscard]] std::optional<QString> Make(const QString& programFolder, const QString& name);

}  // namespace AnotherCamera
