#include "camera/test_capture_aids.h"

#include "camera/frame_scaler.h"
#include "camera/test_picture.h"
#include "picture/bitmap/upright.h"

extern "C" {
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <QBuffer>
#include <QTcpSocket>

#include <array>
#include <cstdlib>
#include <cstring>

namespace {

bool LitAt(const QImage& picture, const QRect& dot) {
    return qGreen(picture.pixel(dot.center())) > 127;
}

bool ShowsDigit(const QImage& picture, int place, int value) {
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect dot = TestPicture::Dot(picture.size(), place, row, column);
            if (LitAt(picture, dot) != TestPicture::Lit(value, row, column)) return false;
        }
    }
    return true;
}

QImage Expected(QSize size, int number) {
    CapturePosition position = number - 1;
    TestPicture source(size, position);
    FrameScaler scaler;
    if (source.Advance() != CaptureSource::Step::Picture) return {};
    return scaler.ToPicture(*source.Picture(false));
}

// A picture that stands upright where this orientation is honoured.
QImage Turned(const QImage& picture, int orientation) {
    return Upright(picture, orientation == 6 || orientation == 8 ? 14 - orientation : orientation);
}

// Writes the packets that the encoder has ready.
bool Drain(AVCodecContext& codec, AVFormatContext& file, AVPacket& packet) {
    while (avcodec_receive_packet(&codec, &packet) >= 0) {
        av_packet_rescale_ts(&packet, codec.time_base, file.streams[0]->time_base);
        if (av_interleaved_write_frame(&file, &packet) < 0) return false;
    }
    return true;
}

bool Encode(AVCodecContext& codec, AVFormatContext& file, QSize size, int orientation, int count) {
    const PacketPtr packet(av_packet_alloc());
    const FramePtr frame(av_frame_alloc());
    CapturePosition position = BeforeFirstPicture;
    TestPicture source(size, position);
    if (OnItsSide(orientation)) size.transpose();
    SwsContext* const scaler =
        sws_getContext(size.width(), size.height(), AV_PIX_FMT_BGR24, codec.width, codec.height,
                       codec.pix_fmt, SWS_BILINEAR, nullptr, nullptr, nullptr);
    const auto space = codec.height < 720 ? AVCOL_SPC_SMPTE170M : AVCOL_SPC_BT709;
    bool good = scaler != nullptr;
    if (good)
        sws_setColorspaceDetails(scaler, sws_getCoefficients(space), 1, sws_getCoefficients(space),
                                 codec.pix_fmt == AV_PIX_FMT_YUVJ420P ? 1 : 0, 0, 1 << 16, 1 << 16);
    for (int i = 0; good && i < count; ++i) {
        av_frame_unref(frame.get());
        frame->format = codec.pix_fmt;
        frame->width = codec.width;
        frame->height = codec.height;
        good = source.Advance() == CaptureSource::Step::Picture &&
               av_frame_get_buffer(frame.get(), 0) >= 0;
        if (!good) break;
        const AVFrame& drawn = *source.Picture(false);
        const QImage stored = Turned(QImage(drawn.data[0], drawn.width, drawn.height,
                                            drawn.linesize[0], QImage::Format_BGR888),
                                     orientation);
        const uint8_t* const rows[4] = {stored.constBits()};
        const int step[4] = {static_cast<int>(stored.bytesPerLine())};
        sws_scale(scaler, rows, step, 0, size.height(), frame->data, frame->linesize);
        frame->pts = i;
        good = avcodec_send_frame(&codec, frame.get()) >= 0 && Drain(codec, file, *packet);
    }
    sws_freeContext(scaler);
    return good && avcodec_send_frame(&codec, nullptr) >= 0 && Drain(codec, file, *packet);
}

}  // namespace

int ReadNumber(const QImage& picture) {
    int number = 0;
    for (int place = 0; place < TestPicture::Digits; ++place) {
        int value = 0;
        while (value < 10 && !ShowsDigit(picture, place, value)) ++value;
        if (value == 10) return -1;
        number = number * 10 + value;
    }
    return number;
}

bool IsWhole(const QImage& picture, int number, double tolerance) {
    const QImage expected = Expected(picture.size(), number);
    if (picture.isNull() || expected.size() != picture.size()) return false;
    int wrong = 0;
    for (int y = 0; y < picture.height(); ++y) {
        qint64 difference = 0;
        for (int i = 0; i < picture.width() * 3; ++i)
            difference += std::abs(picture.constScanLine(y)[i] - expected.constScanLine(y)[i]);
        if (double(difference) > tolerance * picture.width() * 3) ++wrong;
    }
    // Colours run over the edges of the number's ground by a row or two. What is lost, is lost in
    // blocks of eight rows.
    return wrong < 8;
}

bool WriteVideo(const QString& path, const char* name, QSize size, int count, int group, int rate,
                const Storage& storage) {
    const AVCodec* const encoder = avcodec_find_encoder_by_name(name);
    if (!encoder) return false;
    const CodecPtr codec(avcodec_alloc_context3(encoder));
    const QSize square = OnItsSide(storage.Orientation) ? size.transposed() : size;
    const QSize stored = storage.Size.isEmpty() ? square : storage.Size;
    codec->width = stored.width();
    codec->height = stored.height();
    if (stored != square)
        codec->sample_aspect_ratio =
            av_div_q({square.width(), square.height()}, {stored.width(), stored.height()});
    codec->time_base = {1, rate};
    codec->framerate = {rate, 1};
    codec->gop_size = group;
    codec->keyint_min = group;
    codec->max_b_frames = 0;
    codec->pix_fmt = qstrcmp(name, "mjpeg") == 0 ? AV_PIX_FMT_YUVJ420P : AV_PIX_FMT_YUV420P;
    codec->flags |= AV_CODEC_FLAG_QSCALE | AV_CODEC_FLAG_GLOBAL_HEADER;
    codec->global_quality = FF_QP2LAMBDA * 2;
    codec->thread_count = 1;  // the same bytes each time, however busy the machine is
    av_opt_set(codec->priv_data, "crf", "12", 0);
    if (avcodec_open2(codec.get(), encoder, nullptr) < 0) return false;

    AVFormatContext* file = nullptr;
    const QByteArray fileName = path.toUtf8();
    if (avformat_alloc_output_context2(&file, nullptr, nullptr, fileName.constData()) < 0)
        return false;
    AVStream* const stream = avformat_new_stream(file, nullptr);
    avcodec_parameters_from_context(stream->codecpar, codec.get());
    stream->time_base = codec->time_base;
    stream->avg_frame_rate = codec->framerate;
    stream->sample_aspect_ratio = codec->sample_aspect_ratio;
    if (storage.Orientation != 1) {
        // The only one that videos are made with here: 6, a quarter to the right.
        constexpr std::array<int32_t, 9> right{0, 1 << 16, 0, -(1 << 16), 0, 0, 0, 0, 1 << 30};
        uint8_t* const matrix =
            av_stream_new_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, sizeof right);
        memcpy(matrix, right.data(), sizeof right);
    }
    const bool good = avio_open(&file->pb, fileName.constData(), AVIO_FLAG_WRITE) >= 0 &&
                      avformat_write_header(file, nullptr) >= 0 &&
                      Encode(*codec, *file, size, storage.Orientation, count) &&
                      av_write_trailer(file) >= 0;
    avio_closep(&file->pb);
    avformat_free_context(file);
    return good;
}

QByteArray JpegPicture(QSize size, int number, int orientation) {
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    Turned(Expected(size, number), orientation).save(&buffer, "JPG", 90);
    if (orientation == 1) return jpeg;
    const auto exif =
        QByteArray::fromHex("FFE1 0022 457869660000 4D4D002A00000008 0001 011200030000000100");
    return jpeg.insert(2, exif + QByteArray(1, char(orientation)) + QByteArray(6, '\0'));
}

void CaptureBench::Select(const QString& entry) {
    Control.SetCameras({entry, "other|test:64x48"});
    Control.SetDriverIndex(0);
}

int CaptureBench::Grab(double tolerance) {
    if (!Control.GrabFrame()) return -1;
    const int number = ReadNumber(Control.Frame());
    return IsWhole(Control.Frame(), number, tolerance) ? number : -2;
}

WebCamera::WebCamera(Answer answer) {
    if (!listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
    connect(this, &QTcpServer::newConnection, this, [this, answer = std::move(answer)] {
        QTcpSocket* const socket = nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, answer] {
            if (!socket->peek(8192).contains("\r\n\r\n")) return;
            asked = socket->readAll();
            answer(*socket, requests++);
        });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    });
}

QString WebCamera::Entry(const QString& path) const {
    return QStringLiteral("web|http://127.0.0.1:%1/%2").arg(serverPort()).arg(path);
}

void WebCamera::Reply(QTcpSocket& socket, const QByteArray& status, const QByteArray& body) {
    socket.write("HTTP/1.1 " + status +
                 "\r\nContent-Type: image/jpeg\r\nConnection: close\r\nContent-Length: " +
                 QByteArray::number(body.size()) + "\r\n\r\n" + body);
    socket.disconnectFromHost();
}

void WebCamera::BeginStream(QTcpSocket& socket, const QByteArray& type) {
    const QByteArray pictures = "multipart/x-mixed-replace; boundary=next";
    socket.write("HTTP/1.1 200 OK\r\nContent-Type: " + (type.isEmpty() ? pictures : type) +
                 "\r\n\r\n");
}

QByteArray WebCamera::Part(const QByteArray& jpeg) {
    if (jpeg.isEmpty()) return {};
    return "--next\r\nContent-Type: image/jpeg\r\nContent-Length: " +
           QByteArray::number(jpeg.size()) + "\r\n\r\n" + jpeg + "\r\n";
}
