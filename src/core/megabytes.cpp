#include "core/megabytes.h"

void MegabyteCounter::Add(qint64 bytes) {
    constexpr qint64 megabyte = 1024 * 1024;
    const qint64 hundredths = (bytes * 100 + megabyte / 2) / megabyte;
    tenThousandths += hundredths * 100;
}

QString MegabyteCounter::Text() const {
    QString text = QString::number(tenThousandths / 10000);
    QString decimals = QString::number(tenThousandths % 10000).rightJustified(4, u'0');
    while (decimals.endsWith(u'0')) decimals.chop(1);
    return decimals.isEmpty() ? text : text + "." + decimals;
}
