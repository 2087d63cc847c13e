#pragma once

#include <QString>

// The program's version, as CMakeLists.txt names it: "0.1.0".
[[nodiscard]] QString ProgramVersion();
