#pragma once

#include <QList>
#include <QRect>

#include <algorithm>

namespace LabelRoom {

constexpr int Gap = 8;  // pixels that stay free between a label and what is on its right

// How wide a label may be, in pixels, so that it reaches neither a neighbour on its right nor
// beyond `end`. Of the label only the place and the height count; the neighbours may include it.
[[nodiscard]] inline int Width(const QRect& label, const QList<QRect>& neighbours, int end) {
    for (const QRect& other : neighbours) {
        const bool beside = other.top() <= label.bottom() && other.bottom() >= label.top();
        if (beside && other.left() > label.left()) end = std::min(end, other.left() - Gap);
    }
    return std::max(0, end - label.left());
}

}  // namespace LabelRoom
