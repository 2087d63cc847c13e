#pragma once

#include "picture/bitmap/picture_file.h"

#include <QByteArrayView>

// Decodes the first picture of a GIF as Format_ARGB32, as large as the screen that the file asks
// for; what the picture does not cover is transparent. Every pixel of it must be there; what comes
// behind it, more pictures or stray bytes, does not count.
[[nodiscard]] FilePicture ReadGif(QByteArrayView bytes);
