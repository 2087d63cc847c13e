#pragma once

#include <QByteArray>
#include <QStringList>

// The parts of the system's facts that read the kernel's texts.
namespace LinuxFacts {

// Places with files of their own among the kernel's list of mounts (/proc/self/mounts).
[[nodiscard]] QStringList DrivesIn(const QByteArray& mounts);

// The same of the programs that hold a camera. processes: the folder in which each process has one
// ("/proc").
[[nodiscard]] QStringList CameraUsersIn(const QString& processes);

}  // namespace LinuxFacts
