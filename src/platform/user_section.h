#pragma once

#include <QSettings>

#include <memory>

// Opens a section of an application's small values of this user, which outlive the program: in the
// registry on Windows, in a file below the user's configuration elsewhere. A store that cannot be
// written is no fault.
[[nodiscard]] std::unique_ptr<QSettings> OpenUserSection(const QString& application,
                                                         const QString& section);
