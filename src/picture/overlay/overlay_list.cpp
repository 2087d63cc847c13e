#include "picture/overlay/overlay_list.h"

QString OverlayList::Next(int interval, const std::function<QString(int)>& entry) {
    if (interval != changeInterval) countdown = changeInterval = interval;
    QString name = entry(index);
    if (name.isEmpty() && index != 0) {
        index = 0;
        name = entry(0);
    }
    if (--countdown == 0) {
        ++index;
        countdown = changeInterval;
    }
    // An interval that is never reached does not count on for months.
    if (countdown < 0) countdown = 0;
    return name;
}
