#include "camera/http_still.h"

#include "picture/bitmap/picture_file.h"

#include <QBuffer>

namespace {

constexpr qint64 freshEnough = 2000;
// A picture of more pixels than can be handled is made smaller, as long as it covers this.
constexpr QSize enough(3840, 2160);
constexpr qsizetype mostKept = 8 * 1024 * 1024;

}  // namespace

bool HttpStill::MayBe(const CaptureRequest& request) {
    if (request.Kind != CaptureKind::Network || !request.Web) return false;
    const auto hasScheme = [&request](const QString& scheme) {
        return request.Address.startsWith(scheme, Qt::CaseInsensitive);
    };
    const bool web = hasScheme(QStringLiteral("http://")) || hasScheme(QStringLiteral("https://"));
    return web && request.Web->Is != WebAddress::Kind::Stream;
}

HttpStill::HttpStill(const CaptureRequest& request, const std::atomic<bool>& stop,
                     std::atomic<quint64>& arrivals)
    : web(request.Web), question(request.Address, stop, arrivals), frame(av_frame_alloc()) {
    frame->format = AV_PIX_FMT_BGR24;
    frame->color_range = AVCOL_RANGE_JPEG;
}

bool HttpStill::Open() {
    if (Ask() != Step::Picture) return false;
    opened.start();
    return true;
}

CaptureSource::Step HttpStill::Advance() {
    const bool first = opened.isValid() && opened.elapsed() <= freshEnough;
    opened.invalidate();
    return first ? Step::Picture : Ask();
}

CaptureSource::Step HttpStill::Ask() {
    const WebPicture last = web->Last();
    ++web->Asking;
    const WebAnswer answer = question.Ask(last);
    --web->Asking;
    const bool wasStill = web->Is == WebAddress::Kind::Still;
    switch (answer.Is) {
        case WebAnswer::Kind::Stopped:
            return Step::Nothing;
        case WebAnswer::Kind::Picture:
            return Take(answer.Picture);
        case WebAnswer::Kind::Unchanged:
            return image.isNull() ? Take(last) : Step::Picture;
        case WebAnswer::Kind::Stream:
            web->Is = wasStill ? WebAddress::Kind::Unknown : WebAddress::Kind::Stream;
            return wasStill ? Fail(CaptureFault::NotAPicture) : Step::Failed;
        case WebAnswer::Kind::Failed:
            break;
    }
    return Fail(answer.Fault);
}

CaptureSource::Step HttpStill::Take(const WebPicture& picture) {
    QByteArray bytes = picture.Bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return Fail(CaptureFault::NotAPicture);
    const FilePicture read = ReadPicture(buffer, enough);
    if (read.Fault != PictureFault::None) {
        web->SetLast({});
        return Fail(CaptureFault::NotAPicture);
    }
    image = OpaquePicture(read.Image);
    web->Is = WebAddress::Kind::Still;
    web->SetLast(picture.Named() && bytes.size() <= mostKept ? picture : WebPicture());
    return Step::Picture;
}

const AVFrame* HttpStill::Picture(bool /*keyWillDo*/) {
    frame->width = image.width();
    frame->height = image.height();
    frame->data[0] = const_cast<uchar*>(image.constBits());
    frame->linesize[0] = static_cast<int>(image.bytesPerLine());
    return frame.get();
}
