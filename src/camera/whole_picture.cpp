#include "camera/whole_picture.h"

#include "picture/bitmap/jpeg_header.h"

extern "C" {
#include <libavutil/imgutils.h>
}

bool JpegWhole(const uchar* bytes, qsizetype count) {
    const QByteArrayView data(bytes, count);
    // The segments before the picture data may hold a small picture with an end of its own.
    const qsizetype pixels = data.startsWith("\xFF\xD8") ? ReadJpegHeader(data).Pixels : 0;
    // Cameras pad behind the end, so it is looked for backwards.
    return pixels > 0 && data.sliced(pixels).lastIndexOf("\xFF\xD9") >= 0;
}

bool PacketWhole(const AVPacket& packet, const AVCodecParameters& stream) {
    if (packet.size <= 0 || packet.flags & AV_PKT_FLAG_CORRUPT) return false;
    if (stream.codec_id == AV_CODEC_ID_MJPEG) return JpegWhole(packet.data, packet.size);
    if (stream.codec_id != AV_CODEC_ID_RAWVIDEO) return true;
    const int needed =
        av_image_get_buffer_size(AVPixelFormat(stream.format), stream.width, stream.height, 1);
    return needed > 0 && packet.size >= needed;
}

bool FrameWhole(const AVFrame& frame) {
    return !(frame.flags & AV_FRAME_FLAG_CORRUPT) && frame.decode_error_flags == 0 &&
           frame.width > 0 && frame.height > 0;
}
