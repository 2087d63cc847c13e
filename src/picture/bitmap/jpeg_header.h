#pragma once

#include <QByteArrayView>

// What stands in front of the first scan of a JPEG, as far as it matters here.
struct JpegHeader {
    int Orientation = 1;  // as in EXIF: 1 is upright, the others see upright.h
    // All of it has to be kept in memory while it is decoded: the picture comes in several scans.
    bool Buffered = false;
    qsizetype Pixels = 0;  // where they begin; 0: nowhere
};

// Reads the header of a JPEG; of what is damaged the values stay as they are above.
[[nodiscard]] JpegHeader ReadJpegHeader(QByteArrayView bytes);
