#include "picture/overlay/overlay_list.h"

QString OverlayList::Next(int interval, const QStringList& list) {
    if (interval != changeInterval) countdown = changeInterval = interval;
    if (index >= list.size()) index = 0;
    const QString name = list.value(index);
    // An interval of 0 is never reached and does not count on for months.
    if (countdown > 0 && --countdown == 0) {
        ++index;
        countdown = changeInterval;
    }
    return name;
}
