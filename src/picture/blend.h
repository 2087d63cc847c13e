#pragma once

#include <QImage>

// Blends `percent` (0 to 100) of the offline picture into the camera's: the rows from `first` on,
// `count` of them, both Format_BGR888. Each channel is rounded to the nearest whole number with
// halves to the even one; a QPainter at half opacity rounds one pixel in four otherwise, and takes
// ten times as long. Where only one of them has a pixel, the camera picture stays as it is.
void BlendRows(QImage& camera, const QImage& offline, int percent, int first, int count);
