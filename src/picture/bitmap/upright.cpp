#include "picture/bitmap/upright.h"

#include <QTransform>

QImage Upright(const QImage& image, int orientation) {
    constexpr int quarter = 90;
    const QTransform right = QTransform().rotate(quarter);
    switch (orientation) {
        case 2:
            return image.mirrored(true, false);
        case 3:
            return image.mirrored(true, true);
        case 4:
            return image.mirrored(false, true);
        case 5:
            return image.transformed(right).mirrored(true, false);
        case 6:
            return image.transformed(right);
        case 7:
            return image.transformed(right).mirrored(false, true);
        case 8:
            return image.transformed(QTransform().rotate(-quarter));
        default:
            return image;
    }
}
