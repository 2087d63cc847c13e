#pragma once

#include <QImage>

// Copies the part of `source` that begins at `from` and has `size` onto `destination` at `at`
// (pixels), except for the pixels whose colour is exactly `transparent`: there the destination
// shows through. What lies outside either picture is left out. Both are Format_BGR888.
//
// A QPainter with the colour made transparent beforehand gives the same in three times the time.
//
// The result is that of the mask method: a monochrome mask is white where the source has the
// transparent colour; the source is blackened there; SRCAND with the mask blackens the destination
// everywhere else; SRCPAINT puts one into the other. Each pixel so comes whole from one of the two,
// black being the neutral colour of SRCPAINT and white that of SRCAND.
void TransparentCopy(QImage& destination, QPoint at, QSize size, const QImage& source, QPoint from,
                     QRgb transparent);
