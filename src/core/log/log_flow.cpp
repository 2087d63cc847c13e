#include "core/log/log_flow.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 hour = 3'600'000;
constexpr int mostInAnHour = 3;       // of one text
constexpr qsizetype mostKinds = 100;  // that are remembered
constexpr double mostRoom = 300;
constexpr double roomPerMillisecond = 1.0 / 60'000;
constexpr qsizetype longestText = 500;

QString KindOf(const QString& text) {
    static const QRegularExpression numbers("[0-9]+");
    return QString(text).replace(numbers, QStringLiteral("0"));
}

}  // namespace

QStringList LogFlow::Take(const QString& text, qint64 now) {
    const QString name = KindOf(text);
    if (!kinds.contains(name)) {
        Forget();
        kinds[name].Since = now;
    }
    Kind& kind = kinds[name];
    if (now - kind.Since >= hour) {
        kind.Since = now;
        kind.Written = 0;
    }
    if (kind.Written >= mostInAnHour) {
        ++kind.LeftOut;
        return {};
    }
    if (!HasRoom(now)) {
        ++leftOut;
        return {};
    }
    ++kind.Written;
    QStringList lines;
    if (const int count = std::exchange(leftOut, 0); count > 0)
        lines << QStringLiteral("(%1 lines left out)").arg(count);
    const int count = std::exchange(kind.LeftOut, 0);
    lines << (count > 0 ? text + QStringLiteral(" (%1 times more before)").arg(count) : text);
    return lines;
}

bool LogFlow::HasRoom(qint64 now) {
    const double more = filled ? static_cast<double>(now - *filled) * roomPerMillisecond : mostRoom;
    filled = now;
    room = std::min(mostRoom, room + more);
    if (room < 1) return false;
    room -= 1;
    return true;
}

// The one that has not been written for the longest time makes room for another.
void LogFlow::Forget() {
    if (kinds.size() < mostKinds) return;
    const auto oldest = std::min_element(
        kinds.begin(), kinds.end(),
        [](const Kind& one, const Kind& other) { return one.Since < other.Since; });
    leftOut += oldest->LeftOut;
    kinds.erase(oldest);
}

QString LogText(const QString& text, const QStringList& secrets) {
    QString clean = text;
    for (const QString& secret : secrets)
        if (!secret.isEmpty()) clean.replace(secret, QStringLiteral("***"));
    static const QRegularExpression access("://[^/\\s]*@");
    clean.replace(access, QStringLiteral("://***@"));
    for (QChar& each : clean)
        if (each.category() == QChar::Other_Control) each = u' ';
    clean = clean.simplified();
    return clean.size() > longestText ? clean.left(longestText) + u'…' : clean;
}
