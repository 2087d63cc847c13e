#include "base/profile_file.h"

#include <algorithm>
#include <limits>

namespace {

bool IsDigit(QChar each) {
    return each >= u'0' && each <= u'9';
}

// The leading number's characters, without the blanks before it.
QString NumberText(const QString& text) {
    qsizetype begin = 0;
    while (begin < text.size() && (text[begin] == u' ' || text[begin] == u'\t')) ++begin;
    qsizetype end = begin;
    if (end < text.size() && (text[end] == u'-' || text[end] == u'+')) ++end;
    bool fraction = false;
    for (; end < text.size(); ++end) {
        const bool point = text[end] == u'.' && !fraction;
        if (!point && !IsDigit(text[end])) break;
        fraction = fraction || point;
    }
    return text.mid(begin, end - begin);
}

}  // namespace

double Val(const QString& text) {
    using Limits = std::numeric_limits<double>;
    return std::clamp(NumberText(text).toDouble(), Limits::lowest(), Limits::max());
}

int ValLong(const QString& text) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<double>(Val(text), Limits::min(), Limits::max()));
}
