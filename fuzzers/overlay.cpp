#include "picture/overlay/picture_overlay.h"

#include "fuzzer.h"
#include "small_picture.h"

#include <QBuffer>

// Where it goes in the first byte, then the overlay.
const Fuzzer overlayPicture("overlay", [](const QByteArray& bytes) {
    QByteArray file = bytes.mid(1);
    if (file.isEmpty() || !IsQuick(file)) return;
    QBuffer buffer(&file);
    static_cast<void>(buffer.open(QIODevice::ReadOnly));
    const QImage overlay = ReadPicture(buffer).Image;
    if (overlay.isNull()) return;
    const auto place = static_cast<OverlayPlace>((bytes[0] & 0xFF) % 7);
    QImage frame(40, 30, QImage::Format_BGR888);
    frame.fill(0x204060);
    const QImage before = frame.copy();
    const QRect stamped = PlaceOverlay(frame, overlay, place);
    const QPoint at = OverlayPosition(place, frame.size(), overlay.size());
    // Each pixel comes from one of the two, as the overlay has it.
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            const QPoint here(x, y);
            const bool covered = stamped.contains(here);
            const QRgb on = covered ? overlay.pixel(here - at) : 0;
            const bool solid = overlay.hasAlphaChannel() ? qAlpha(on) == 255
                                                         : covered && on != overlay.pixel(0, 0);
            const bool clear = overlay.hasAlphaChannel() ? qAlpha(on) == 0 : !solid;
            if (solid) MUST(frame.pixel(here) == on);
            if (clear) MUST(frame.pixel(here) == before.pixel(here));
        }
    }
});
