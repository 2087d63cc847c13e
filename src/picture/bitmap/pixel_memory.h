#pragma once

#include <QImage>

// Memory for the pixels of large pictures, used again for the next one of that size by whichever
// thread makes it. The system would take it back at once, and getting it anew, page by page, takes
// half as long as encoding the picture.

// A picture of Format_BGR888, its pixels not set; null where there is no memory.
[[nodiscard]] QImage NewPicture(QSize size);
