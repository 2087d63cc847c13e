#pragma once

#include "core/commands/surroundings.h"

#include <QStringList>

// `stillpost --web-page`: puts the web page of the settings beside the pictures. Another file of
// its name is left alone. folders: where the program's files are.
[[nodiscard]] CommandStatus PutPage(const CommandSurroundings& around, const QStringList& folders);
