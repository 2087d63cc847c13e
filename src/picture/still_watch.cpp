#include "picture/still_watch.h"

#include <QHashFunctions>
#include <QImage>

namespace {

// Row by row: what lies between them is nobody's.
std::size_t PrintOf(const QImage& picture) {
    const auto row = static_cast<std::size_t>(picture.width()) * picture.depth() / 8;
    std::size_t print = qHashMulti(0, picture.width(), picture.height());
    for (int y = 0; y < picture.height(); ++y)
        print = qHashBits(picture.constScanLine(y), row, print);
    return print;
}

}  // namespace

void StillWatch::Note(const QImage& picture, qint64 now) {
    const std::size_t next = PrintOf(picture);
    if (!since || next != print) since = now;
    print = next;
}
