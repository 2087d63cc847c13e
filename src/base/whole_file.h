#pragma once

#include <QString>

#include <functional>

class QFile;

// Files that others read while they are replaced: a reader sees the old one or the new one, whole.
namespace WholeFile {

// Lets `write` fill a temporary file in the folder of `path` and renames it over `path`. When
// anything fails (write returns false, disk full, no such folder) the old file stays, the temporary
// one goes, and the result is false. Waits for no disk: after a power cut the old file may be back.
[[nodiscard]] bool Replace(const QString& path, const std::function<bool(QFile&)>& write);

// The same in the room of the file that SetAside has left there last: finding and clearing new room
// takes the system several times as long as writing does. `write` finds the old content, or an
// empty file where there is none or reusable() refuses it.
[[nodiscard]] bool Replace(const QString& path, const std::function<bool(QFile&)>& write,
                           const std::function<bool(const QFile&)>& reusable);

// Takes a file that nobody shall find any more away and keeps its room, with what is in it, for the
// next of that name. Returns whether it was kept; it is gone in any case.
bool SetAside(const QString& path);

// Removes what SetAside has left.
void Forget(const QString& path);

// The same with the content of another file.
[[nodiscard]] bool Copy(const QString& from, const QString& to);

}  // namespace WholeFile
