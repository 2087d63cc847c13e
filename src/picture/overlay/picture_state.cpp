#include "picture/overlay/picture_state.h"

#include <limits>

int WholeNumber(const QString& text) {
    const QString number = text.trimmed();
    const bool negative = number.startsWith(u'-');
    qint64 value = 0;
    for (qsizetype i = negative || number.startsWith(u'+') ? 1 : 0; i < number.size(); ++i) {
        const char16_t digit = number.at(i).unicode();
        if (digit < u'0' || digit > u'9') break;
        value = qMin<qint64>(value * 10 + (digit - u'0'), std::numeric_limits<int>::max());
    }
    return static_cast<int>(negative ? -value : value);
}
