#include "picture/blend.h"

#include <algorithm>

namespace {

// Numbers of 16 bits and no branch, so that the compiler does eight channels at once: one by one
// they take longer than the encoder.
void Blend(uchar* to, const uchar* from, int count, int percent) {
    const auto rest = static_cast<quint16>(100 - percent);
    const auto part = static_cast<quint16>(percent);
    for (int i = 0; i < count; ++i) {
        const auto sum = static_cast<quint16>(to[i] * rest + from[i] * part + 50);
        // A hundredth of it: exact for every number of 16 bits.
        const auto quarter = static_cast<quint16>(sum >> 2);
        const auto whole = static_cast<quint16>(static_cast<quint16>(quarter * 5243U >> 16) >> 1);
        const auto half = static_cast<quint16>(static_cast<quint16>(whole * 100) == sum);
        to[i] = static_cast<uchar>(whole - (whole & half));
    }
}

// The same at 50 per cent, bytes alone: sixteen channels at once.
void Halve(uchar* to, const uchar* from, int count) {
    for (int i = 0; i < count; ++i) {
        const auto up = static_cast<uchar>((to[i] + from[i] + 1) >> 1);
        const auto odd = static_cast<uchar>((to[i] ^ from[i]) & 1);
        to[i] = static_cast<uchar>(up - (odd & up));
    }
}

}  // namespace

void BlendRows(QImage& camera, const QImage& offline, int percent, int first, int count) {
    constexpr int pixelBytes = 3;
    const QSize common = camera.size().boundedTo(offline.size());
    const int end = std::min(first + count, common.height());
    const int bytes = common.width() * pixelBytes;
    for (int y = first; y < end; ++y) {
        uchar* const to = camera.scanLine(y);
        const uchar* const from = offline.constScanLine(y);
        percent == 50 ? Halve(to, from, bytes) : Blend(to, from, bytes, percent);
    }
}
