#include "core/day_record.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <limits>

namespace {

constexpr quint32 mark = 0x5344'5231;  // of files of this form
constexpr auto form = QDataStream::Qt_6_0;

std::size_t PlaceOf(qint64 minute) {
    return static_cast<std::size_t>(minute % DayRecord::Minutes);
}

template <class Number>
void Add(Number& sum, qint64 more) {
    constexpr qint64 most = std::numeric_limits<Number>::max();
    sum = static_cast<Number>(std::clamp<qint64>(sum + more, 0, most));
}

}  // namespace

MinuteRecord& DayRecord::Of(qint64 minute) {
    return ring.at(PlaceOf(minute));
}

void DayRecord::MoveTo(qint64 minute) {
    const qint64 now = std::max<qint64>(minute, 0);
    const auto [from, to] = std::minmax(last, now);
    const qint64 moved = std::min<qint64>(to - from, Minutes);
    for (qint64 i = 0; i < moved; ++i) Of(to - i) = {};
    last = now;
}

bool DayRecord::Note(MinuteState state) {
    MinuteState& now = Of(last).State;
    if (state <= now) return false;
    now = state;
    return true;
}

void DayRecord::AddPicture(qint64 bytes, qint64 milliseconds) {
    MinuteRecord& now = Of(last);
    now.State = MinuteState::Published;
    Add(now.Pictures, 1);
    Add(now.Bytes, bytes);
    Add(now.Milliseconds, milliseconds);
}

MinuteRecord DayRecord::At(qint64 minute) const {
    if (minute < 0 || minute > last || minute <= last - Minutes) return {};
    return ring.at(PlaceOf(minute));
}

QByteArray DayRecord::ToBytes() const {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(form);
    out << mark << last;
    for (const MinuteRecord& each : ring)
        out << static_cast<quint8>(each.State) << each.Pictures << each.Bytes << each.Milliseconds;
    out << qChecksum(bytes);
    return bytes;
}

std::optional<DayRecord> DayRecord::FromBytes(const QByteArray& bytes) {
    DayRecord read;
    const QByteArray whole = bytes.chopped(std::min<qsizetype>(bytes.size(), sizeof(quint16)));
    QDataStream in(bytes);
    in.setVersion(form);
    quint32 found = 0;
    quint16 sum = 0;
    bool known = true;
    in >> found >> read.last;
    for (MinuteRecord& each : read.ring) {
        quint8 state = 0;
        in >> state >> each.Pictures >> each.Bytes >> each.Milliseconds;
        known = known && state <= static_cast<quint8>(MinuteState::Published);
        each.State = static_cast<MinuteState>(state);
    }
    in >> sum;
    const bool right = known && found == mark && read.last >= 0 && sum == qChecksum(whole);
    if (!right || in.status() != QDataStream::Ok || !in.atEnd()) return std::nullopt;
    return read;
}
