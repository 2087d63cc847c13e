#pragma once

#include "picture/bitmap/bitmap_file.h"

#include <QSize>
#include <QtEndian>

// The size that a picture claims; JPEG, which is read in a smaller size, aside.
inline QSize ClaimedSize(const QByteArray& bytes) {
    const auto little = [&](auto number, qsizetype at) {
        using Number = decltype(number);
        const bool there = at + qsizetype{sizeof(Number)} <= bytes.size();
        return there ? int{qFromLittleEndian<Number>(bytes.constData() + at)} : 0;
    };
    const auto big = [&](qsizetype at) {
        return at + 4 <= bytes.size() ? qFromBigEndian<qint32>(bytes.constData() + at) : 0;
    };
    if (bytes.startsWith("BM")) {
        if (little(qint32(), 14) == 12) return {little(quint16(), 18), little(quint16(), 20)};
        return {little(qint32(), 18), little(qint32(), 22)};
    }
    if (bytes.startsWith("GIF8")) return {little(quint16(), 6), little(quint16(), 8)};
    if (bytes.startsWith("\x89PNG")) return {big(16), big(20)};
    return {};
}

// Whether a picture is read in no time: a large one takes long and goes the same ways, but for one
// that is so large that it is refused.
inline bool IsQuick(const QByteArray& bytes) {
    constexpr qint64 few = 10'000;
    const QSize size = ClaimedSize(bytes);
    const qint64 pixels = qAbs(qint64{size.width()} * size.height());
    return pixels <= few || pixels > MostPixelsIn(bytes.size());
}
