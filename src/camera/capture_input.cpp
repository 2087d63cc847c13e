#include "camera/capture_input.h"

#include "camera/frame_geometry.h"
#include "camera/whole_picture.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <QDir>
#include <QFile>

#include <string_view>

namespace {

class Options {
  public:
    Options() = default;
    ~Options() { av_dict_free(&entries); }
    Q_DISABLE_COPY_MOVE(Options)

    void Set(const char* key, const QString& value) {
        av_dict_set(&entries, key, value.toUtf8().constData(), 0);
    }
    AVDictionary** Get() { return &entries; }

  private:
    AVDictionary* entries = nullptr;
};

void SetDeviceOptions(AVFormatContext& context, Options& options, const CaptureFormat& wanted) {
    options.Set("video_size", QStringLiteral("%1x%2").arg(wanted.Width).arg(wanted.Height));
    if (wanted.Rate > 0) options.Set("framerate", QString::number(wanted.Rate, 'f', 3));
    const QByteArray name = wanted.PixelFormat.toLatin1();
    if (!wanted.Compressed) {
        if (!name.isEmpty()) options.Set("pixel_format", wanted.PixelFormat);
    } else if (const auto* const codec = avcodec_descriptor_get_by_name(name.constData())) {
        context.video_codec_id = codec->id;
    }
}

bool IsIntraOnly(AVCodecID codec) {
    const AVCodecDescriptor* const descriptor = avcodec_descriptor_get(codec);
    return descriptor && descriptor->props & AV_CODEC_PROP_INTRA_ONLY;
}

}  // namespace

CaptureInput::CaptureInput(CaptureRequest wanted, const std::atomic<bool>& stopFlag,
                           std::atomic<quint64>& arrivalCount)
    : request(std::move(wanted)), stop(stopFlag), arrivals(arrivalCount) {}

// FFmpeg asks this all the time while it waits for bytes. To look into a stream may take longer
// than a camera may be silent, so what comes is counted here too.
int CaptureInput::AskedToStop(void* self) {
    auto& own = *static_cast<CaptureInput*>(self);
    const AVIOContext* const file = own.opened ? own.opened->pb : nullptr;
    if (file && file->bytes_read != own.bytes) {
        own.bytes = file->bytes_read;
        ++own.arrivals;
    }
    return own.stop ? 1 : 0;
}

int CaptureInput::Open() {
    Close();
    int result = request.Device.Open ? OpenDevice() : OpenFormat();
    if (result >= 0 && !packets) result = FindStream();
    if (result >= 0) result = OpenCodec();
    if (result < 0) Close();
    return result < 0 ? result : 0;
}

void CaptureInput::Close() {
    codec.reset();
    packets.reset();
    opened = nullptr;
    format.reset();
    needKey = true;
}

QByteArray CaptureInput::Address() const {
    if (request.Kind != CaptureKind::File) return request.Address.toUtf8();
    // A colon in a file's name would else be taken for the end of a protocol's.
    if (request.Address.startsWith(QStringLiteral("file:"))) return request.Address.toUtf8();
    return "file:" + QDir::fromNativeSeparators(request.Address).toUtf8();
}

int CaptureInput::OpenDevice() {
    packets.emplace();
    const int result = packets->Open(request, format);
    streamIndex = 0;
    return result;
}

int CaptureInput::OpenFormat() {
    AVFormatContext* context = avformat_alloc_context();
    if (!context) return AVERROR(ENOMEM);
    context->interrupt_callback = {AskedToStop, this};
    const AVInputFormat* input = nullptr;
    Options options;
    if (request.Kind == CaptureKind::Device) {
        input = av_find_input_format(request.Device.Input.toLatin1().constData());
        context->flags |= AVFMT_FLAG_NONBLOCK;
        if (request.Format) SetDeviceOptions(*context, options, *request.Format);
    } else if (request.Kind == CaptureKind::Network) {
        // Pictures over UDP lose packets; it is the second choice.
        options.Set("rtsp_flags", QStringLiteral("prefer_tcp"));
        options.Set("analyzeduration", QStringLiteral("1000000"));
    } else {
        options.Set("pattern_type", QStringLiteral("none"));  // '%' in a name is just that
    }
    // Frees the context when it fails.
    const int result = avformat_open_input(&context, Address().constData(), input, options.Get());
    if (result < 0) return result;
    format.reset(context);
    // Not before: one that fails to open is asked for the last time while its file is being freed.
    opened = context;
    bytes = 0;
    return 0;
}

int CaptureInput::FindStream() {
    // A camera tells what it sends; to look into it first would take time, and spin on a device
    // that is asked without waiting.
    const bool known = request.Kind == CaptureKind::Device ||
                       (request.Kind == CaptureKind::Network && format->nb_streams == 1 &&
                        IsIntraOnly(format->streams[0]->codecpar->codec_id));
    if (!known) {
        const int result = avformat_find_stream_info(format.get(), nullptr);
        if (result < 0) return result;
    }
    streamIndex = av_find_best_stream(format.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (streamIndex < 0) return streamIndex;
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        if (i != static_cast<unsigned>(streamIndex)) format->streams[i]->discard = AVDISCARD_ALL;
    }
    return 0;
}

int CaptureInput::OpenCodec() {
    const AVCodecParameters* const parameters = Stream().codecpar;
    const AVCodec* const decoder = avcodec_find_decoder(parameters->codec_id);
    if (!decoder) return AVERROR_DECODER_NOT_FOUND;
    codec.reset(avcodec_alloc_context3(decoder));
    if (!codec) return AVERROR(ENOMEM);
    const int result = avcodec_parameters_to_context(codec.get(), parameters);
    if (result < 0) return result;
    intraOnly = IsIntraOnly(parameters->codec_id);
    codec->pkt_timebase = Stream().time_base;
    codec->thread_count = 1;  // more threads hold pictures back
    if (intraOnly) codec->err_recognition |= AV_EF_EXPLODE;
    if (!IsVideoFile()) codec->flags |= AV_CODEC_FLAG_LOW_DELAY;
    return avcodec_open2(codec.get(), decoder, nullptr);
}

int CaptureInput::Read(AVPacket& packet) {
    for (;;) {
        av_packet_unref(&packet);
        if (packets) return packets->Read(packet);
        const int result = av_read_frame(format.get(), &packet);
        if (result < 0 || packet.stream_index == streamIndex) return result;
    }
}

void CaptureInput::Decode(const AVPacket* packet) {
    if (packet && !PacketWhole(*packet, *Stream().codecpar)) {
        needKey = true;
        return;
    }
    if (avcodec_send_packet(codec.get(), packet) < 0 && packet) needKey = true;
}

bool CaptureInput::Receive(AVFrame& frame) {
    for (;;) {
        const int result = avcodec_receive_frame(codec.get(), &frame);
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return false;
        if (result < 0 || !FrameWhole(frame)) {
            needKey = true;
            // A decoder that reports an error for good would else be asked for ever.
            if (result < 0) return false;
            continue;
        }
        // The pictures after a damaged one are made from it, up to the next that stands for itself.
        if (needKey && !intraOnly && !frame.key_frame && frame.pict_type != AV_PICTURE_TYPE_I)
            continue;
        needKey = false;
        // What is not told is customary: the newer colour model for pictures of high definition.
        if (frame.colorspace == AVCOL_SPC_UNSPECIFIED && !intraOnly && frame.height >= 720)
            frame.colorspace = AVCOL_SPC_BT709;
        CompleteGeometry(*format, *format->streams[streamIndex], frame);
        return true;
    }
}

void CaptureInput::SkipToKey() {
    avcodec_flush_buffers(codec.get());
    needKey = true;
}

void CaptureInput::Seek(qint64 stamp) {
    if (av_seek_frame(format.get(), streamIndex, stamp, AVSEEK_FLAG_BACKWARD) >= 0) SkipToKey();
}

bool CaptureInput::IsStill() const {
    if (request.Kind == CaptureKind::Device) return false;
    const std::string_view name(format->iformat->name);
    return name.ends_with("_pipe") || name.ends_with("image2");
}

bool CaptureInput::IsVideoFile() const {
    if (request.Kind == CaptureKind::File) return true;
    return request.Kind == CaptureKind::Network && format->duration > 0 && format->pb &&
           format->pb->seekable & AVIO_SEEKABLE_NORMAL;
}
