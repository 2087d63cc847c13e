#pragma once

#include "picture/bitmap/picture_file.h"

#include <QStringList>

#include <optional>

class Texts;

// The pictures in the overlay folders: below the program folder and, for what came with the
// program, below the installed ones.

// Their names without regard to folder, in the order of the alphabet. places: the program folder
// first.
[[nodiscard]] QStringList OverlayNames(const QStringList& places);

// Where an overlay of that name lies; empty when it does not.
[[nodiscard]] QString OverlayFile(const QStringList& places, const QString& name);

struct AdoptedOverlay {
    QString Name;  // as it stands in the settings
    QString Copy;  // full path of the copy that was made; empty when none was needed
};

// Makes a picture from anywhere an overlay: one from elsewhere is copied into the overlay folder of
// the program folder, under another name when there is another picture of that name. Nothing when
// it cannot be copied.
[[nodiscard]] std::optional<AdoptedOverlay> AdoptOverlay(const QStringList& places,
                                                         const QString& path);

// What is wrong with an overlay, as a sentence; empty when nothing is.
[[nodiscard]] QString OverlayFaultText(const Texts& words, const QString& name, PictureFault fault);
