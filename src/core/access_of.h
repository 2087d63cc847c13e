#pragma once

#include "net/server_access.h"

struct Settings;

// Where the pictures go by these settings.
[[nodiscard]] ServerAccess AccessOf(const Settings& settings, const QString& programFolder);
