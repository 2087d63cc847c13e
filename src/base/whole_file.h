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

// The same with the content of another file.
[[nodiscard]] bool Copy(const QString& from, const QString& to);

}  // namespace WholeFile
