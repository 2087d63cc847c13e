#pragma once

#include <QStringList>

// The libraries that the program uses, a line each.
[[nodiscard]] QStringList LibraryVersions();

// What the system's OpenSSH says of itself; takes a moment.
[[nodiscard]] QStringList SshVersion();
