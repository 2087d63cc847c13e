#pragma once

#include "camera/capture_ffmpeg.h"
#include "picture/bitmap/upright.h"

#include <QSize>

// How a decoded frame is meant to be seen. Decoders hand frames out as they are stored: turned as
// the camera was held, and with pixels that need not be as wide as they are high.
struct FrameGeometry {
    QSize Square;         // its size as it is stored, but with square pixels
    int Orientation = 1;  // how it is stored, see Upright

    // The size in which it is seen, pixels.
    [[nodiscard]] QSize Shown() const {
        return OnItsSide(Orientation) ? Square.transposed() : Square;
    }
};

// Pixels become square by another width; rows are doubled where every second one is missing.
// Proportions out of reason count as square.
[[nodiscard]] FrameGeometry GeometryOf(const AVFrame& frame);

// Has the frame tell of its geometry what only its stream and its container do.
void CompleteGeometry(AVFormatContext& format, AVStream& stream, AVFrame& frame);
