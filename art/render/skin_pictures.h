#pragma once

#include <QString>

// Turns the drawings of one skin into its pictures. `source` holds splash.svg and StatusBg.svg (the
// two windows), controls.svg (a sheet with a cell for each control's picture) and Position.ini
// (where the controls stand); `target` receives the bitmaps, the JPEG files and Position.ini.
// A picture of a control is cut out of the window behind it, so that its edges cannot be seen.
// Throws std::runtime_error when something is missing or a control hangs over the window's edge.
void RenderSkin(const QString& source, const QString& target);

// Writes the bytes as a file, folders included; throws std::runtime_error when that fails.
void WriteFile(const QString& path, const QByteArray& bytes);
