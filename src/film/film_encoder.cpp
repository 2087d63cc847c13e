#include "film/film_encoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <cstring>
#include <span>

namespace {

struct Free {
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVFormatContext* format) const { avformat_free_context(format); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
    void operator()(AVIOContext* io) const {
        if (io) av_freep(&io->buffer);
        avio_context_free(&io);
    }
};
template <class Object>
using Owned = std::unique_ptr<Object, Free>;

// How an encoder is told its quality. Without a number of its own it gets bits a second.
struct Encoder {
    const char* Name;
    FilmFormat Format;
    const char* Options;  // key=value:...
    double BitsPerPixel;  // 0: the options say what quality is wanted
};

// The better first. Fast ones of their settings: a film is made while somebody waits for it.
constexpr std::array encoders{
    Encoder{"libx264", FilmFormat::Mp4, "preset=veryfast:crf=22", 0},
    Encoder{"h264_mf", FilmFormat::Mp4, "", 0.12},
    Encoder{"libopenh264", FilmFormat::Mp4, "", 0.12},
    Encoder{"mpeg4", FilmFormat::Mp4, "flags=+qscale:global_quality=472", 0},
    Encoder{"libvpx-vp9", FilmFormat::WebM, "deadline=good:cpu-used=5:row-mt=1:crf=33", 0},
    Encoder{"libvpx", FilmFormat::WebM, "deadline=good:cpu-used=4", 0.12},
};

const char* Muxer(FilmFormat format) {
    return format == FilmFormat::WebM ? "webm" : "mp4";
}

bool IsThere(const Encoder& encoder) {
    return avcodec_find_encoder_by_name(encoder.Name) &&
           av_guess_format(Muxer(encoder.Format), nullptr, nullptr);
}

AVPixelFormat PixelFormat(const AVCodec& codec) {
    if (!codec.pix_fmts) return AV_PIX_FMT_YUV420P;
    for (const AVPixelFormat* each = codec.pix_fmts; *each != AV_PIX_FMT_NONE; ++each)
        if (*each == AV_PIX_FMT_YUV420P) return *each;
    return AV_PIX_FMT_NV12;
}

// The file and what was first wrong with it, which a file itself forgets.
struct Target {
    QFile& File;
    QFileDevice::FileError Error = QFileDevice::NoError;
};

// A full disk takes a part first, and says only then why not the rest.
bool WriteAll(QFile& file, const char* bytes, qint64 count) {
    while (count > 0) {
        const qint64 written = file.write(bytes, count);
        if (written <= 0) return false;
        bytes += written;
        count -= written;
    }
    return true;
}

// FFmpeg's callbacks; whether it may change the bytes depends on its version.
template <class Byte>
int WriteTo(void* opaque, Byte* bytes, int count) {
    auto& target = *static_cast<Target*>(opaque);
    const auto* const plain = static_cast<const uint8_t*>(bytes);
    if (WriteAll(target.File, reinterpret_cast<const char*>(plain), count)) return count;
    if (target.Error == QFileDevice::NoError) target.Error = target.File.error();
    return AVERROR(EIO);
}

int64_t SeekIn(void* opaque, int64_t offset, int whence) {
    QFile& file = static_cast<Target*>(opaque)->File;
    if (whence == AVSEEK_SIZE) return file.size();
    const qint64 from = whence == SEEK_CUR ? file.pos() : whence == SEEK_END ? file.size() : 0;
    return file.seek(from + offset) ? from + offset : AVERROR(EIO);
}

Owned<AVFrame> NewFrame(AVPixelFormat format, QSize size) {
    Owned<AVFrame> frame(av_frame_alloc());
    frame->format = format;
    frame->width = size.width();
    frame->height = size.height();
    if (av_frame_get_buffer(frame.get(), 0) < 0) return nullptr;
    return frame;
}

void SetUp(AVCodecContext& codec, const FilmEncoder::Form& form, const Encoder& encoder) {
    constexpr int keySeconds = 4;  // from one picture that stands for itself to the next
    codec.width = form.Size.width();
    codec.height = form.Size.height();
    codec.time_base = {1, form.Rate};
    codec.framerate = {form.Rate, 1};
    codec.gop_size = keySeconds * form.Rate;
    codec.pix_fmt = PixelFormat(*codec.codec);
    codec.color_range = AVCOL_RANGE_MPEG;
    codec.colorspace = AVCOL_SPC_BT709;
    codec.color_primaries = AVCOL_PRI_BT709;
    codec.color_trc = AVCOL_TRC_BT709;
    codec.thread_count = form.Threads;
    const double pixels = double{1} * form.Size.width() * form.Size.height() * form.Rate;
    codec.bit_rate = static_cast<int64_t>(pixels * encoder.BitsPerPixel);
}

// Quality stays what is wanted where it costs less than that.
void Limit(AVCodecContext& codec, int64_t bitRate) {
    const bool byQuality = codec.bit_rate == 0 && codec.codec_id == AV_CODEC_ID_H264;
    if (!byQuality)
        codec.bit_rate = codec.bit_rate > 0 ? std::min(codec.bit_rate, bitRate) : bitRate;
    codec.flags &= ~AV_CODEC_FLAG_QSCALE;
    codec.rc_max_rate = bitRate;
    codec.rc_buffer_size = static_cast<int>(std::min<int64_t>(bitRate, INT_MAX));
}

}  // namespace

struct FilmEncoder::Parts {
    explicit Parts(QFile& file) : Into{file} {}

    Target Into;
    Form Wanted;
    Owned<AVIOContext> Io;
    Owned<AVFormatContext> Format;
    Owned<AVCodecContext> Codec;
    Owned<SwsContext> Scaler;
    Owned<AVFrame> Picture;  // with the room behind its rows that the conversion wants
    Owned<AVFrame> Frame;
    Owned<AVPacket> Packet{av_packet_alloc()};
    AVStream* Stream = nullptr;
    int64_t Count = 0;

    [[nodiscard]] bool OpenCodec(const Encoder& encoder);
    [[nodiscard]] bool OpenFile();
    [[nodiscard]] bool OpenFrames();
    [[nodiscard]] bool Encode(const AVFrame* frame);
};

bool FilmEncoder::Parts::OpenCodec(const Encoder& encoder) {
    Codec.reset(avcodec_alloc_context3(avcodec_find_encoder_by_name(encoder.Name)));
    if (!Codec) return false;
    SetUp(*Codec, Wanted, encoder);
    AVDictionary* options = nullptr;
    av_dict_parse_string(&options, encoder.Options, "=", ":", 0);
    // What all encoders have counts before the limit does, what is its own when it opens.
    av_opt_set_dict(Codec.get(), &options);
    if (Wanted.BitRate > 0) Limit(*Codec, Wanted.BitRate);
    if (Format->oformat->flags & AVFMT_GLOBALHEADER) Codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const int opened = avcodec_open2(Codec.get(), nullptr, &options);
    av_dict_free(&options);
    return opened >= 0;
}

bool FilmEncoder::Parts::OpenFile() {
    constexpr int buffer = 256 * 1024;
    auto* const room = static_cast<unsigned char*>(av_malloc(buffer));
    Io.reset(avio_alloc_context(room, buffer, 1, &Into, nullptr, &WriteTo, &SeekIn));
    Stream = avformat_new_stream(Format.get(), nullptr);
    if (!Io || !Stream || avcodec_parameters_from_context(Stream->codecpar, Codec.get()) < 0)
        return false;
    Stream->time_base = Codec->time_base;
    Stream->avg_frame_rate = Codec->framerate;
    Format->pb = Io.get();
    Format->flags |= AVFMT_FLAG_CUSTOM_IO;
    AVDictionary* options = nullptr;
    if (Wanted.Format == FilmFormat::Mp4) av_dict_set(&options, "movflags", "+faststart", 0);
    const int begun = avformat_write_header(Format.get(), &options);
    av_dict_free(&options);
    return begun >= 0;
}

bool FilmEncoder::Parts::OpenFrames() {
    const QSize size = Wanted.Size;
    Picture = NewFrame(AV_PIX_FMT_BGR24, size);
    Frame = NewFrame(Codec->pix_fmt, size);
    Scaler.reset(sws_getContext(size.width(), size.height(), AV_PIX_FMT_BGR24, size.width(),
                                size.height(), Codec->pix_fmt, SWS_BILINEAR, nullptr, nullptr,
                                nullptr));
    if (!Picture || !Frame || !Scaler) return false;
    constexpr int one = 1 << 16;
    sws_setColorspaceDetails(Scaler.get(), sws_getCoefficients(SWS_CS_DEFAULT), 1,
                             sws_getCoefficients(SWS_CS_ITU709), 0, 0, one, one);
    return true;
}

bool FilmEncoder::Parts::Encode(const AVFrame* frame) {
    if (avcodec_send_frame(Codec.get(), frame) < 0) return false;
    for (;;) {
        const int result = avcodec_receive_packet(Codec.get(), Packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return true;
        if (result < 0) return false;
        Packet->stream_index = Stream->index;
        Packet->duration = 1;
        av_packet_rescale_ts(Packet.get(), Codec->time_base, Stream->time_base);
        if (av_interleaved_write_frame(Format.get(), Packet.get()) < 0) return false;
    }
}

bool FilmEncoder::Offers(FilmFormat format) {
    return std::ranges::any_of(
        encoders, [format](const Encoder& each) { return each.Format == format && IsThere(each); });
}

FilmEncoder::FilmEncoder(QFile& file) : parts(std::make_unique<Parts>(file)) {}

FilmEncoder::~FilmEncoder() = default;

bool FilmEncoder::Open(const Form& form) {
    // Its own words on standard error tell nobody anything.
    av_log_set_level(AV_LOG_QUIET);
    parts->Wanted = form;
    // MP4's index comes to the front by reading what is written, for which FFmpeg opens the file.
    const QByteArray address = "file:" + parts->Into.File.fileName().toUtf8();
    AVFormatContext* format = nullptr;
    avformat_alloc_output_context2(&format, nullptr, Muxer(form.Format), address.constData());
    parts->Format.reset(format);
    const bool opened =
        format && std::ranges::any_of(encoders, [&](const Encoder& each) {
            return each.Format == form.Format && IsThere(each) && parts->OpenCodec(each);
        });
    return opened && parts->OpenFrames() && parts->OpenFile();
}

bool FilmEncoder::Add(const QImage& picture) {
    AVFrame& rows = *parts->Picture;
    const auto bytes = static_cast<std::size_t>(rows.width) * 3;
    for (int y = 0; y < rows.height; ++y)
        std::memcpy(rows.data[0] + qptrdiff{y} * rows.linesize[0], picture.constScanLine(y), bytes);
    // The encoder may still have the one before.
    if (av_frame_make_writable(parts->Frame.get()) < 0) return false;
    sws_scale(parts->Scaler.get(), rows.data, rows.linesize, 0, rows.height, parts->Frame->data,
              parts->Frame->linesize);
    parts->Frame->pts = parts->Count++;
    return parts->Encode(parts->Frame.get());
}

bool FilmEncoder::Finish() {
    const bool done = parts->Encode(nullptr) && av_write_trailer(parts->Format.get()) >= 0;
    avio_flush(parts->Io.get());
    return done && parts->Io->error >= 0;
}

QFileDevice::FileError FilmEncoder::FileError() const {
    return parts->Into.Error;
}
