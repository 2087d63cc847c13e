#pragma once

#include <QSettings>

#include <memory>

// Opens a section of an application's values of this user where this system keeps them.
[[nodiscard]] std::unique_ptr<QSettings> OpenUserSection(const QString& application,
                                                         const QString& section);
