#pragma once

#include <QString>
#include <QStringList>

// Paths in settings may come from either system: '\' and '/' both separate when read; what is
// written or shown uses the system's own separator.
namespace Paths {

// The path with every separator turned into the system's own.
[[nodiscard]] QString Native(const QString& path);

// Native(path) with the system's own separator at its end; an empty path stays empty.
[[nodiscard]] QString WithSeparator(const QString& path);

// The full path of the file or folder `name` (which may itself have folders in it) below `folder`,
// found without regard to case, an exact match first; empty when there is none.
[[nodiscard]] QString Find(const QString& folder, const QString& name);

// The same in the first of the folders that has it; empty ones do not count.
[[nodiscard]] QString Find(const QStringList& folders, const QString& name);

}  // namespace Paths
