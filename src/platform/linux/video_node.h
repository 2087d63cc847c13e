#pragma once

#include <linux/videodev2.h>

#include <QString>

// An open device node of the kernel's video interface; closed at the end of its scope.
class VideoNode {
  public:
    explicit VideoNode(const QString& path);
    ~VideoNode();
    VideoNode(const VideoNode&) = delete;
    VideoNode& operator=(const VideoNode&) = delete;

    // 0, or the negative value of errno for which it could not be opened.
    [[nodiscard]] int OpenError() const { return openError; }
    [[nodiscard]] int Descriptor() const { return descriptor; }

    // One request of the interface. 0 or a negative value of errno.
    [[nodiscard]] int Do(unsigned long request, void* argument) const;
    [[nodiscard]] bool Ask(unsigned long request, void* answer) const {
        return Do(request, answer) == 0;
    }

  private:
    int descriptor;
    int openError = 0;
};

// A text field of a driver's answer, which need not end in a NUL.
template <size_t N>
QString DriverText(const __u8 (&field)[N]) {
    const char* const text = reinterpret_cast<const char*>(field);
    return QString::fromUtf8(text, qsizetype(qstrnlen(text, N)));
}

// FFmpeg's name for a pixel format of the interface; empty for one that is not taken.
[[nodiscard]] QString PixelFormatName(__u32 code);
// The other way round; 0 for a name that is not known.
[[nodiscard]] __u32 PixelFormatCode(const QString& name);
