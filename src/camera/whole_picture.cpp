#include "camera/whole_picture.h"

extern "C" {
#include <libavutil/imgutils.h>
}

#include <algorithm>
#include <array>
#include <span>

namespace {
constexpr uchar startOfImage = 0xD8;
constexpr uchar endOfImage = 0xD9;
constexpr uchar startOfScan = 0xDA;
}  // namespace

bool JpegWhole(const uchar* bytes, qsizetype count) {
    const std::span data(bytes, size_t(count));
    if (count < 4 || data[0] != 0xFF || data[1] != startOfImage) return false;
    // The segments before the picture data may hold a small picture with an end of its own.
    size_t at = 2;
    while (at + 4 <= data.size() && data[at] == 0xFF && data[at + 1] != startOfScan) {
        if (data[at + 1] == 0xFF)
            ++at;  // fill byte
        else
            at += 2 + size_t(data[at + 2] * 256 + data[at + 3]);
    }
    if (at + 4 > data.size() || data[at] != 0xFF) return false;
    // Cameras pad behind the end, so it is looked for backwards.
    static constexpr std::array end{uchar{0xFF}, endOfImage};
    const auto scan = data.subspan(at);
    return std::find_end(scan.begin(), scan.end(), end.begin(), end.end()) != scan.end();
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
