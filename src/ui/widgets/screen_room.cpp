#include "ui/widgets/screen_room.h"

#include <QScreen>
#include <QWidget>

QSize ScreenRoom(const QWidget& window) {
    constexpr QSize usualFrame(16, 40);
    const QSize frame = window.frameGeometry().size() - window.size();
    const QSize kept = window.windowFlags() & Qt::FramelessWindowHint ? QSize(0, 0) : usualFrame;
    return window.screen()->availableSize() - frame.expandedTo(kept);
}
