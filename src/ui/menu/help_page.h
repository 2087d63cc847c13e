#pragma once

#include <QString>
#include <QStringList>

// The full path of the help page, German or English, in the first of the folders that has it: the
// program folder, then the installed copies. Empty when none has. The part below the folder keeps
// its forward slashes on every system.
[[nodiscard]] QString HelpPage(bool german, const QStringList& folders);
