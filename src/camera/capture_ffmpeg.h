#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
}

#include <memory>

// FFmpeg's objects, freed at the end of their scope.

struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreeCodec {
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
};
struct FreeFormat {
    void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
};

using PacketPtr = std::unique_ptr<AVPacket, FreePacket>;
using FramePtr = std::unique_ptr<AVFrame, FreeFrame>;
using CodecPtr = std::unique_ptr<AVCodecContext, FreeCodec>;
using FormatPtr = std::unique_ptr<AVFormatContext, FreeFormat>;
