#include "camera/frame_scaler.h"

#include "camera/frame_geometry.h"
#include "picture/bitmap/pixel_memory.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

QImage::Format ImageFormat(AVPixelFormat format) {
    if (format == AV_PIX_FMT_GRAY8) return QImage::Format_Grayscale8;
    return format == AV_PIX_FMT_BGR24 ? QImage::Format_BGR888 : QImage::Format_RGB32;
}

// How many rows of the frame are converted, and how far apart they lie.
struct Field {
    int Rows;
    std::array<int, AV_NUM_DATA_POINTERS> Steps;

    explicit Field(const AVFrame& frame) : Rows(frame.height) {
        std::ranges::copy(frame.linesize, Steps.begin());
        if (!frame.interlaced_frame || frame.height < 2) return;
        Rows /= 2;
        for (int& step : Steps) step *= 2;
    }
};

}  // namespace

FrameScaler::FrameScaler() : scratch(av_frame_alloc()) {}

FrameScaler::~FrameScaler() {
    for (const Tables& entry : tables) sws_freeContext(entry.Context);
}

bool FrameScaler::Prepare(Tables& kept, int quality, const AVFrame& frame, int rows,
                          const Target& target) {
    const std::array key{frame.width,           rows,         frame.format, frame.colorspace + 0,
                         frame.color_range + 0, target.Width, target.Height};
    if (kept.Context && key == kept.Key) return true;
    sws_freeContext(kept.Context);
    kept.Context = sws_getContext(frame.width, rows, AVPixelFormat(frame.format), target.Width,
                                  target.Height, target.Format, quality, nullptr, nullptr, nullptr);
    kept.Key = key;
    if (!kept.Context) return false;

    int* table = nullptr;
    int* targetTable = nullptr;
    int fullRange = 0;
    int targetRange = 0;
    int brightness = 0;
    int contrast = 0;
    int saturation = 0;
    if (sws_getColorspaceDetails(kept.Context, &table, &fullRange, &targetTable, &targetRange,
                                 &brightness, &contrast, &saturation) < 0)
        return true;  // no conversion between colour models, so nothing to tell
    if (frame.color_range == AVCOL_RANGE_JPEG) fullRange = 1;
    sws_setColorspaceDetails(kept.Context, sws_getCoefficients(frame.colorspace), fullRange,
                             targetTable, targetRange, brightness, contrast, saturation);
    return true;
}

bool FrameScaler::Scale(Tables& kept, int quality, const AVFrame& frame, const Target& target) {
    const Field field(frame);
    if (!Prepare(kept, quality, frame, field.Rows, target)) return false;
    uint8_t* top[4] = {target.Top};
    const int step[4] = {target.Step};
    return sws_scale(kept.Context, frame.data, field.Steps.data(), 0, field.Rows, top, step) ==
           target.Height;
}

bool FrameScaler::Convert(Tables& kept, int quality, const AVFrame& frame, const Target& target) {
    if (frame.width < 1 || frame.height < 1 || target.Width < 1 || target.Height < 1) return false;
    // The conversion may write a few pixels beyond a row that is not a multiple of what it does at
    // once. Such rows go through memory that has room for it, as do those of turned frames.
    if (target.Orientation == 1 && target.Width % 16 == 0)
        return Scale(kept, quality, frame, target);
    QSize stored(target.Width, target.Height);
    if (OnItsSide(target.Orientation)) stored.transpose();
    scratch->format = target.Format;
    scratch->width = stored.width() + 16;
    scratch->height = stored.height();
    if (av_frame_get_buffer(scratch.get(), 0) < 0) return false;
    const uchar* const pixels = scratch->data[0];
    const int step = scratch->linesize[0];
    const bool done = Scale(kept, quality, frame,
                            {.Format = target.Format,
                             .Width = stored.width(),
                             .Height = stored.height(),
                             .Top = scratch->data[0],
                             .Step = step});
    if (done) {
        const QImage image(pixels, stored.width(), stored.height(), step,
                           ImageFormat(target.Format));
        const QImage seen = Upright(image, target.Orientation);
        const int rowBytes = av_image_get_linesize(target.Format, target.Width, 0);
        for (int y = 0; y < target.Height; ++y)
            std::memcpy(target.Top + qptrdiff(y) * target.Step, seen.constScanLine(y),
                        size_t(rowBytes));
    }
    av_frame_unref(scratch.get());
    return done;
}

QImage FrameScaler::ToPicture(const AVFrame& frame) {
    if (frame.width < 1 || frame.height < 1) return {};
    const FrameGeometry geometry = GeometryOf(frame);
    QImage picture = NewPicture(geometry.Shown());
    if (picture.isNull()) return {};
    const bool done = Convert(tables[0], SWS_BILINEAR, frame,
                              {.Format = AV_PIX_FMT_BGR24,
                               .Width = picture.width(),
                               .Height = picture.height(),
                               .Top = picture.bits(),
                               .Step = static_cast<int>(picture.bytesPerLine()),
                               .Orientation = geometry.Orientation});
    return done ? picture : QImage();
}

QImage FrameScaler::ToImage(const AVFrame& frame, QSize size) {
    const FrameGeometry geometry = GeometryOf(frame);
    const QSize whole = geometry.Shown();
    size = size.isEmpty() ? whole : whole.scaled(size, Qt::KeepAspectRatioByExpanding);
    if (size.width() > whole.width()) size = whole;
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) return {};
    const bool done = Convert(tables[1], SWS_FAST_BILINEAR, frame,
                              {.Format = AV_PIX_FMT_RGB32,
                               .Width = size.width(),
                               .Height = size.height(),
                               .Top = image.bits(),
                               .Step = static_cast<int>(image.bytesPerLine()),
                               .Orientation = geometry.Orientation});
    return done ? image : QImage();
}

double FrameScaler::Brightness(const AVFrame& frame) {
    constexpr int side = 32;
    std::array<uchar, side * side> small;
    const bool done = Convert(tables[2], SWS_FAST_BILINEAR, frame,
                              {.Format = AV_PIX_FMT_GRAY8,
                               .Width = side,
                               .Height = side,
                               .Top = small.data(),
                               .Step = side});
    return done ? std::accumulate(small.begin(), small.end(), 0.0) / small.size() : 0;
}
