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

AVColorSpace ColourSpace(PictureTraits::Model model) {
    switch (model) {
        case PictureTraits::Model::Bt601:
            return AVCOL_SPC_SMPTE170M;
        case PictureTraits::Model::Bt709:
            return AVCOL_SPC_BT709;
        case PictureTraits::Model::Bt2020:
            return AVCOL_SPC_BT2020_NCL;
        case PictureTraits::Model::Smpte240:
            return AVCOL_SPC_SMPTE240M;
        default:
            return AVCOL_SPC_UNSPECIFIED;
    }
}

AVColorRange ColourRange(PictureTraits::Levels levels) {
    if (levels == PictureTraits::Levels::Unknown) return AVCOL_RANGE_UNSPECIFIED;
    return levels == PictureTraits::Levels::Full ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
}

void DescribeTraits(AVCodecParameters& stream, const PictureTraits& traits) {
    using Fields = PictureTraits::Fields;
    stream.color_space = ColourSpace(traits.Colours);
    stream.color_range = ColourRange(traits.Range);
    stream.sample_aspect_ratio = {traits.PixelWidth, traits.PixelHeight};
    if (traits.Rows == Fields::Interleaved) stream.field_order = AV_FIELD_TT;
    // One field will do; its pixels are twice as high.
    if (traits.Rows == Fields::Stacked) stream.height /= 2;
    if (traits.Rows == Fields::Stacked || traits.Rows == Fields::Single)
        stream.sample_aspect_ratio.den *= 2;
}

int FillPacket(AVPacket& packet, const uchar* bytes, qsizetype size) {
    const int result = av_new_packet(&packet, static_cast<int>(size));
    if (result >= 0) std::memcpy(packet.data, bytes, static_cast<size_t>(size));
    return result;
}

}  // namespace

std::vector<uchar> WithoutPadding(const VideoBuffer& picture, AVPixelFormat pixels, QSize size,
                                  int rows, int rowBytes) {
    std::array<int, planes> steps{};
    const int length = av_image_get_buffer_size(pixels, size.width(), rows, 1);
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
                            rows, 1);
    return tight;
}

int DevicePackets::Open(const CaptureRequest& request, FormatPtr& format) {
    int error = 0;
    device = request.Device.Open(request.Address, request.Format, error);
    if (!device) return AVERROR(-error);
    format.reset(avformat_alloc_context());
    AVStream* const stream = format ? avformat_new_stream(format.get(), nullptr) : nullptr;
    if (!stream) return AVERROR(ENOMEM);
    Describe(*stream->codecpar);
    return 0;
}

void DevicePackets::Describe(AVCodecParameters& stream) {
    const CaptureFormat& picture = device->Format();
    const QByteArray name = picture.PixelFormat.toLatin1();
    stream.codec_type = AVMEDIA_TYPE_VIDEO;
    stream.width = picture.Width;
    stream.height = picture.Height;
    pixels = av_get_pix_fmt(name.constData());
    if (pixels == AV_PIX_FMT_NONE) {
        const AVCodecDescriptor* const codec = avcodec_descriptor_get_by_name(name.constData());
        stream.codec_id = codec ? codec->id : AV_CODEC_ID_NONE;
        return;
    }
    stream.codec_id = AV_CODEC_ID_RAWVIDEO;
    stream.codec_tag = avcodec_pix_fmt_to_codec_tag(pixels);
    stream.format = pixels;
    DescribeTraits(stream, device->Traits());
    rows = stream.height;
    loose = device->RowBytes() > av_image_get_linesize(pixels, picture.Width, 0) ||
            rows < picture.Height;
}

int DevicePackets::Read(AVPacket& packet) {
    VideoBuffer buffer;
    if (const int error = device->Take(buffer)) return AVERROR(-error);
    // Decoders of compressed pictures read a little behind the end.
    return pixels == AV_PIX_FMT_NONE || loose ? Copy(buffer, packet) : Lend(buffer, packet);
}

int DevicePackets::Lend(const VideoBuffer& buffer, AVPacket& packet) {
    auto lent = std::make_unique<Lent>(Lent{device, buffer.Index});
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
    if (loose) {
        const CaptureFormat& picture = device->Format();
        const std::vector<uchar> tight = WithoutPadding(
            buffer, pixels, QSize(picture.Width, picture.Height), rows, device->RowBytes());
        result = FillPacket(packet, tight.data(), static_cast<qsizetype>(tight.size()));
    } else {
        result = FillPacket(packet, buffer.Bytes, buffer.Size);
    }
    device->GiveBack(buffer.Index);
    return result;
}
