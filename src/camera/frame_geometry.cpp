#include "camera/frame_geometry.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr size_t matrixSize = 9 * sizeof(int32_t);
constexpr int longestSide = 8192;
// The width of a pixel by its height, in reason.
constexpr double leastRatio = 0.25;
constexpr double mostRatio = 4;
constexpr double oneFieldRatio = 0.7;  // so narrow, it has the height of two
constexpr double hardlyOff = 0.01;     // nobody sees that, and to scale costs sharpness

// The matrix says where a step to the right (a, b) and one down (c, d) in what is stored lead.
int OrientationOf(const int32_t* matrix) {
    const qint64 a = matrix[0];
    const qint64 b = matrix[1];
    const qint64 c = matrix[3];
    const qint64 d = matrix[4];
    if (std::abs(a) + std::abs(d) >= std::abs(b) + std::abs(c)) {
        if (a < 0) return d < 0 ? 3 : 2;
        return d < 0 ? 4 : 1;
    }
    if (b < 0) return c < 0 ? 7 : 8;
    return c < 0 ? 6 : 5;
}

QSize WithSquarePixels(QSize size, AVRational pixel) {
    double ratio = pixel.num > 0 && pixel.den > 0 ? av_q2d(pixel) : 1;
    if (ratio < leastRatio || ratio > mostRatio) return size;
    QSize square = size;
    if (ratio < oneFieldRatio) {
        square.rheight() *= 2;
        ratio *= 2;
    }
    if (std::abs(ratio - 1) > hardlyOff)
        square.rwidth() = 2 * std::max(1, qRound(size.width() * ratio / 2));
    const bool reasonable = std::max(square.width(), square.height()) <= longestSide;
    return reasonable ? square : size;
}

}  // namespace

FrameGeometry GeometryOf(const AVFrame& frame) {
    FrameGeometry geometry{
        .Square = WithSquarePixels({frame.width, frame.height}, frame.sample_aspect_ratio)};
    const AVFrameSideData* const matrix =
        av_frame_get_side_data(&frame, AV_FRAME_DATA_DISPLAYMATRIX);
    if (matrix && matrix->size >= matrixSize)
        geometry.Orientation = OrientationOf(reinterpret_cast<const int32_t*>(matrix->data));
    return geometry;
}

void CompleteGeometry(AVFormatContext& format, AVStream& stream, AVFrame& frame) {
    frame.sample_aspect_ratio = av_guess_sample_aspect_ratio(&format, &stream, &frame);
    // The frame's own is what its decoder has found in it, in EXIF data too.
    if (av_frame_get_side_data(&frame, AV_FRAME_DATA_DISPLAYMATRIX)) return;
    size_t size = 0;
    const uint8_t* const matrix =
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!matrix || size < matrixSize) return;
    AVFrameSideData* const copy =
        av_frame_new_side_data(&frame, AV_FRAME_DATA_DISPLAYMATRIX, matrixSize);
    if (copy) std::memcpy(copy->data, matrix, matrixSize);
}
