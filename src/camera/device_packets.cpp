#include "camera/device_packets.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
}

#include <array>
#include <cstring>

namespace {

constexpr int planes = 4;

struct Lent {
    std::shared_ptr<VideoDevice> Device;
    int Index;
};

void GiveBack(void* lent, uint8_t* /*bytes*/) {
    const std::unique_ptr<Lent> own(static_cast<Lent*>(lent));
    own->Device->GiveBack(own->Index);
}

int FillPacket(AVPacket& packet, const uchar* bytes, qsizetype size) {
    const int result = av_new_packet(&packet, static_cast<int>(size));
    if (result >= 0) std::memcpy(packet.data, bytes, static_cast<size_t>(size));
    return result;
}

}  // namespace

std::vector<uchar> WithoutPadding(const VideoBuffer& picture, AVPixelFormat pixels, QSize size,
                                  int rowBytes) {
    std::array<int, planes> steps{};
    const int length = av_image_get_buffer_size(pixels, size.width(), size.height(), 1);
    if (length <= 0 || av_image_fill_linesizes(steps.data(), pixels, size.width()) < 0) return {};
    const int row = steps[0];
    for (int& step : steps) step = static_cast<int>(qint64(step) * rowBytes / row);
    std::array<uint8_t*, planes> source{};
    const int needed = av_image_fill_pointers(source.data(), pixels, size.height(),
                                              const_cast<uint8_t*>(picture.Bytes), steps.data());
    // The last row may come without the bytes behind it.
    if (needed <= 0 || picture.Size < needed - (rowBytes - row)) return {};
    std::vector<uchar> tight(static_cast<size_t>(length));
    av_image_copy_to_buffer(tight.data(), length, source.data(), steps.data(), pixels, size.width(),
                            size.height(), 1);
    return tight;
}

int DevicePackets::Open(const CaptureRequest& request, FormatPtr& format) {
    int error = 0;
    device = request.Device.Open(request.Address, request.Format, error);
    if (!device) return AVERROR(-error);
    format.reset(avformat_alloc_context());
    AVStream* const stream = format ? avformat_new_stream(format.get(), nullptr) : nullptr;
    return stream ? Describe(*stream->codecpar) : AVERROR(ENOMEM);
}

int DevicePackets::Describe(AVCodecParameters& stream) {
    const CaptureFormat& picture = device->Format();
    const QByteArray name = picture.PixelFormat.toLatin1();
    stream.codec_type = AVMEDIA_TYPE_VIDEO;
    stream.width = picture.Width;
    stream.height = picture.Height;
    pixels = av_get_pix_fmt(name.constData());
    if (pixels == AV_PIX_FMT_NONE) {
        const AVCodecDescriptor* const codec = avcodec_descriptor_get_by_name(name.constData());
        stream.codec_id = codec ? codec->id : AV_CODEC_ID_NONE;
        return 0;
    }
    stream.codec_id = AV_CODEC_ID_RAWVIDEO;
    stream.codec_tag = avcodec_pix_fmt_to_codec_tag(pixels);
    stream.format = pixels;
    padded = device->RowBytes() > av_image_get_linesize(pixels, picture.Width, 0);
    return 0;
}

int DevicePackets::Read(AVPacket& packet) {
    VideoBuffer buffer;
    if (const int error = device->Take(buffer)) return AVERROR(-error);
    // Decoders of compressed pictures read a little behind the end.
    return pixels == AV_PIX_FMT_NONE || padded ? Copy(buffer, packet) : Lend(buffer, packet);
}

int DevicePackets::Lend(const VideoBuffer& buffer, AVPacket& packet) {
    auto lent = std::make_unique<Lent>(device, buffer.Index);
    packet.buf =
        av_buffer_create(const_cast<uint8_t*>(buffer.Bytes), static_cast<size_t>(buffer.Size),
                         GiveBack, lent.get(), AV_BUFFER_FLAG_READONLY);
    if (!packet.buf) {
        device->GiveBack(buffer.Index);
        return AVERROR(ENOMEM);
    }
    (void)lent.release();
    packet.data = packet.buf->data;
    packet.size = static_cast<int>(buffer.Size);
    packet.flags |= AV_PKT_FLAG_KEY;
    return 0;
}

int DevicePackets::Copy(const VideoBuffer& buffer, AVPacket& packet) {
    int result;
    if (padded) {
        const CaptureFormat& picture = device->Format();
        const std::vector<uchar> tight = WithoutPadding(
            buffer, pixels, QSize(picture.Width, picture.Height), device->RowBytes());
        result = FillPacket(packet, tight.data(), static_cast<qsizetype>(tight.size()));
    } else {
        result = FillPacket(packet, buffer.Bytes, buffer.Size);
    }
    device->GiveBack(buffer.Index);
    return result;
}
