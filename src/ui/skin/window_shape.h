#pragma once

#include <QImage>
#include <QRegion>

class QWidget;

// The outline of a window from its picture: every pixel of the colour at the top left is cut away.
// Only the outer 150 pixels of a row are looked at one by one; between them a run's end is found to
// within 100 pixels, so a hole in the middle of a wide picture may be missed or come out too large.
// Returns what is left, in pixels of the picture; nothing for a picture of one colour.
[[nodiscard]] QRegion BuildRegionFromPicture(const QImage& picture);

// Gives the window the size and the outline of the picture and returns the outline. A picture of
// one colour makes a rectangular window: one that cannot be seen is no use.
QRegion ShapeWindowFromPicture(QWidget& window, const QImage& picture);

// The picture with its cut-away pixels beside the outline coloured like their neighbours, so that
// the colour that is cut away does not show as a seam where the picture is drawn larger.
[[nodiscard]] QImage WithCleanEdges(const QImage& picture, const QRegion& outline);

// The picture with everything beside the outline transparent.
[[nodiscard]] QImage CutOut(const QImage& picture, const QRegion& outline);
