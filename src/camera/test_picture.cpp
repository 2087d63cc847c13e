#include "camera/test_picture.h"

#include "camera/capture_format.h"
#include "picture/bitmap/pixel_memory.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr int longestSide = 8192;
// Five rows of three dots for each digit, the topmost row in the highest bits.
constexpr std::array<int, 10> shapes{075557, 026227, 071747, 071717, 055711,
                                     074717, 074757, 071122, 075757, 075717};

// A dot is so large that all digits with a dot's space between them fit into the width.
int DotSide(QSize size) {
    return std::max(1, std::min(size.width() / (TestPicture::Digits * 4 + 1), size.height() / 7));
}

}  // namespace

TestPicture::TestPicture(QSize pictureSize, CapturePosition& ownPosition)
    : size(pictureSize), position(ownPosition), frame(av_frame_alloc()) {
    frame->format = AV_PIX_FMT_BGR24;
    frame->width = size.width();
    frame->height = size.height();
    frame->color_range = AVCOL_RANGE_JPEG;
}

QSize TestPicture::ParseAddress(const QString& address) {
    const QString prefix = QStringLiteral("test:");
    if (!address.startsWith(prefix, Qt::CaseInsensitive)) return {};
    const auto wish = ParseFormatWish(address.mid(prefix.size()));
    if (!wish || std::max(wish->Width, wish->Height) > longestSide) return {};
    return {wish->Width, wish->Height};
}

QRect TestPicture::Dot(QSize size, int place, int row, int column) {
    const int side = DotSide(size);
    const int left = (size.width() - side * (Digits * 4 - 1)) / 2;
    const int top = (size.height() - side * 5) / 2;
    return {left + (place * 4 + column) * side, top + row * side, side, side};
}

bool TestPicture::Lit(int value, int row, int column) {
    return (shapes[static_cast<size_t>(value)] >> (3 * (4 - row) + (2 - column)) & 1) != 0;
}

CaptureSource::Step TestPicture::Advance() {
    if (picture.isNull()) picture = NewPicture(size);
    if (picture.isNull()) return Fail(CaptureFault::BadAddress);
    frame->data[0] = picture.bits();
    frame->linesize[0] = static_cast<int>(picture.bytesPerLine());
    const qint64 number = std::max<qint64>(position, -1) + 1;
    position = number;
    DrawPattern(number);
    DrawNumber(number);
    return Step::Picture;
}

// Colours that wander to the left, with a dark ground for the number.
void TestPicture::DrawPattern(qint64 number) {
    uchar* const first = frame->data[0];
    for (int x = 0; x < size.width(); ++x) {
        const int phase = static_cast<int>((x + number * 4) % 768);
        for (int channel = 0; channel < 3; ++channel) {
            const int distance = std::abs((phase + channel * 256) % 768 - 384);
            first[x * 3 + channel] = static_cast<uchar>(std::clamp(distance, 0, 255));
        }
    }
    const int side = DotSide(size);
    const QRect digits = Dot(size, 0, 0, 0) | Dot(size, Digits - 1, 4, 2);
    const QRect ground = digits.adjusted(-side, -side, side, side) & QRect(QPoint(0, 0), size);
    const int right = ground.right() + 1;
    for (int y = 1; y < size.height(); ++y) {
        const bool whole = y < ground.top() || y > ground.bottom();
        CopyPixels(y, 0, whole ? size.width() : ground.left());
        if (!whole) CopyPixels(y, right, size.width());
    }
    Fill(ground, 0);
}

// From the first row, up to `end`.
void TestPicture::CopyPixels(int y, int begin, int end) {
    uchar* const first = frame->data[0];
    std::memcpy(first + qptrdiff(y) * frame->linesize[0] + begin * 3, first + begin * 3,
                size_t(end - begin) * 3);
}

void TestPicture::DrawNumber(qint64 number) {
    for (int place = Digits - 1; place >= 0; --place, number /= 10) {
        for (int dot = 0; dot < 15; ++dot) {
            if (Lit(static_cast<int>(number % 10), dot / 3, dot % 3))
                Fill(Dot(size, place, dot / 3, dot % 3), 255);
        }
    }
}

void TestPicture::Fill(const QRect& area, uchar level) {
    const QRect inside = area & QRect(QPoint(0, 0), size);
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        std::memset(frame->data[0] + qptrdiff(y) * frame->linesize[0] + inside.left() * 3, level,
                    size_t(std::max(0, inside.width())) * 3);
}
