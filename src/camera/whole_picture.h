#pragma once

#include "camera/capture_ffmpeg.h"

#include <QtGlobal>

// Whether all of a picture is there. Cameras and lines lose the end of pictures, and a decoder
// fills what is missing with grey or with the picture before.

// Whether the bytes are a JPEG picture from its first marker to its last.
[[nodiscard]] bool JpegWhole(const uchar* bytes, qsizetype count);

// Whether the packet can hold a whole picture of its stream, as far as that shows before decoding.
[[nodiscard]] bool PacketWhole(const AVPacket& packet, const AVCodecParameters& stream);

// Whether the decoder made the frame from all of its data.
[[nodiscard]] bool FrameWhole(const AVFrame& frame);
