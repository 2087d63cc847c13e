#pragma once

#include <QFont>
#include <QStringList>

// The font of the readouts: "Digital Readout Expanded" where it is installed, else the program's
// own from "fonts/StillpostReadout.ttf" in the first of the places (full paths) that has it, else
// the application's. pixels: its size.
[[nodiscard]] QFont DisplayFont(const QStringList& places, int pixels);
