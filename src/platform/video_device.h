#pragma once

#include "platform/capture_devices.h"

#include <memory>

// A filled buffer of a camera; its bytes stay until the buffer is given back.
struct VideoBuffer {
    int Index = 0;
    const uchar* Bytes = nullptr;
    qsizetype Size = 0;  // bytes filled
};

// A camera that was opened and delivers. It has a handful of buffers: each one taken must be given
// back soon, or pictures are lost. May be used from any one thread; errors are negative values of
// errno.
class VideoDevice {
  public:
    VideoDevice() = default;
    virtual ~VideoDevice() = default;
    VideoDevice(const VideoDevice&) = delete;
    VideoDevice& operator=(const VideoDevice&) = delete;

    // What it delivers, which need not be what was asked for.
    [[nodiscard]] virtual const CaptureFormat& Format() const = 0;
    // From one row of the picture to the next (of the first plane), bytes; 0 when compressed.
    [[nodiscard]] virtual int RowBytes() const = 0;

    // The oldest picture not taken yet. Returns 0, -EAGAIN when there is none yet, else the error
    // for which no more will come.
    [[nodiscard]] virtual int Take(VideoBuffer& buffer) = 0;
    virtual void GiveBack(int index) = 0;
};
