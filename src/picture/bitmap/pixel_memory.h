#pragma once

#include <QImage>

#include <memory>

// Memory for the pixels of large pictures, used again for the next one of that size by whichever
// thread makes it. The system would take it back at once, and getting it anew, page by page, takes
// half as long as encoding the picture.

// The bytes are not set. Null where there is no memory.
[[nodiscard]] std::shared_ptr<uchar[]> TakePixels(qint64 bytes);

// A picture of Format_BGR888 in such memory, its pixels not set; null where there is none.
[[nodiscard]] QImage NewPicture(QSize size);

// The same out of these pixels: rows of BitmapStride bytes, the top one first. They are drawn on
// in place.
[[nodiscard]] QImage PictureOf(std::shared_ptr<uchar[]> pixels, QSize size);
