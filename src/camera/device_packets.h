#pragma once

#include "camera/capture_source.h"
#include "platform/video_device.h"

#include <QSize>

#include <vector>

// The stream of a camera that the system opens its own way, in the packets that FFmpeg's decoders
// take. Raw pictures stay in the camera's buffers until the packet is freed.
class DevicePackets {
  public:
    // Opens the camera and describes its stream in a new format context. Returns 0 or an error of
    // FFmpeg.
    [[nodiscard]] int Open(const CaptureRequest& request, FormatPtr& format);

    // The next packet, as CaptureInput::Read gives it.
    [[nodiscard]] int Read(AVPacket& packet);

  private:
    void Describe(AVCodecParameters& stream);
    [[nodiscard]] int Lend(const VideoBuffer& buffer, AVPacket& packet);
    [[nodiscard]] int Copy(const VideoBuffer& buffer, AVPacket& packet);

    std::shared_ptr<VideoDevice> device;
    AVPixelFormat pixels = AV_PIX_FMT_NONE;  // of raw pictures
    int rows = 0;                            // of them that are taken
    bool loose = false;                      // other bytes lie between or behind those
};

// Copies the first `rows` rows of a raw picture of this size, which begin every rowBytes bytes (of
// the first plane, the other planes in proportion), into one without gaps. Empty when the source is
// too short for the picture.
[[nodiscard]] std::vector<uchar> WithoutPadding(const VideoBuffer& picture, AVPixelFormat pixels,
                                                QSize size, int rows, int rowBytes);
