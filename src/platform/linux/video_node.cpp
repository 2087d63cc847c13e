#include "platform/linux/video_node.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

struct FormatName {
    __u32 Code;
    const char* Name;
};

constexpr std::array formatNames{
    FormatName{V4L2_PIX_FMT_YUYV, "yuyv422"},       FormatName{V4L2_PIX_FMT_UYVY, "uyvy422"},
    FormatName{V4L2_PIX_FMT_YUV420, "yuv420p"},     FormatName{V4L2_PIX_FMT_YUV422P, "yuv422p"},
    FormatName{V4L2_PIX_FMT_NV12, "nv12"},          FormatName{V4L2_PIX_FMT_BGR24, "bgr24"},
    FormatName{V4L2_PIX_FMT_RGB24, "rgb24"},        FormatName{V4L2_PIX_FMT_RGB565, "rgb565le"},
    FormatName{V4L2_PIX_FMT_GREY, "gray"},          FormatName{V4L2_PIX_FMT_SBGGR8, "bayer_bggr8"},
    FormatName{V4L2_PIX_FMT_SGBRG8, "bayer_gbrg8"}, FormatName{V4L2_PIX_FMT_SGRBG8, "bayer_grbg8"},
    FormatName{V4L2_PIX_FMT_SRGGB8, "bayer_rggb8"}, FormatName{V4L2_PIX_FMT_MJPEG, "mjpeg"},
    FormatName{V4L2_PIX_FMT_JPEG, "mjpeg"},         FormatName{V4L2_PIX_FMT_H264, "h264"},
    FormatName{V4L2_PIX_FMT_MPEG4, "mpeg4"},
};

}  // namespace

VideoNode::VideoNode(const QString& path)
    : descriptor(open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC)) {
    if (descriptor < 0) openError = -errno;
}

VideoNode::~VideoNode() {
    if (descriptor >= 0) close(descriptor);
}

int VideoNode::Do(unsigned long request, void* argument) const {
    if (descriptor < 0) return openError;
    int result;
    do result = ioctl(descriptor, request, argument);
    while (result < 0 && errno == EINTR);
    return result < 0 ? -errno : 0;
}

QString PixelFormatName(__u32 code) {
    const auto found =
        std::ranges::find_if(formatNames, [code](const auto& name) { return name.Code == code; });
    return found == formatNames.end() ? QString() : QString::fromLatin1(found->Name);
}

__u32 PixelFormatCode(const QString& name) {
    const auto found = std::ranges::find_if(
        formatNames, [&name](const auto& entry) { return name == QLatin1String(entry.Name); });
    return found == formatNames.end() ? 0 : found->Code;
}
