#include "platform/linux/v4l2_device.h"

#include "platform/linux/picture_traits.h"
#include "platform/linux/video_node.h"

#include <sys/mman.h>

#include <QSize>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <vector>

namespace {

// One may be held while it is decoded, one waits to be taken, two are with the driver.
constexpr __u32 bufferCount = 4;
constexpr __u32 leastBuffers = 2;

class V4l2Device : public VideoDevice {
  public:
    explicit V4l2Device(const QString& address) : node(address) {}
    ~V4l2Device() override {
        int type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        (void)node.Do(VIDIOC_STREAMOFF, &type);
        for (const Mapping& mapping : mappings) munmap(mapping.Start, mapping.Length);
    }

    // 0 or a negative value of errno, as all below.
    [[nodiscard]] int Start(const std::optional<CaptureFormat>& wanted);

    [[nodiscard]] const CaptureFormat& Format() const override { return format; }
    [[nodiscard]] PictureTraits Traits() const override { return traits; }
    [[nodiscard]] int RowBytes() const override { return rowBytes; }
    [[nodiscard]] int Take(VideoBuffer& buffer) override;
    void GiveBack(int index) override { (void)Enqueue(static_cast<__u32>(index)); }

  private:
    struct Mapping {
        void* Start;
        size_t Length;
    };

    [[nodiscard]] int SetFormat(const std::optional<CaptureFormat>& wanted);
    void AskPixelShape();
    [[nodiscard]] bool Usable(const v4l2_buffer& filled) const;
    void SetRate(double rate);
    [[nodiscard]] int MapBuffers();
    [[nodiscard]] int MapBuffer(__u32 index);
    [[nodiscard]] int Enqueue(__u32 index);

    VideoNode node;
    CaptureFormat format;
    PictureTraits traits;
    bool alternating = false;  // every second buffer holds the other field
    int rowBytes = 0;
    std::vector<Mapping> mappings;
};

int V4l2Device::Start(const std::optional<CaptureFormat>& wanted) {
    if (node.OpenError() != 0) return node.OpenError();
    if (const int error = SetFormat(wanted)) return error;
    if (wanted && wanted->Rate > 0) SetRate(wanted->Rate);
    if (const int error = MapBuffers()) return error;
    int type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    return node.Do(VIDIOC_STREAMON, &type);
}

int V4l2Device::SetFormat(const std::optional<CaptureFormat>& wanted) {
    v4l2_format setting{};
    setting.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    if (const int error = node.Do(VIDIOC_G_FMT, &setting)) return error;
    v4l2_pix_format& picture = setting.fmt.pix;
    if (wanted) {
        picture.width = static_cast<__u32>(wanted->Width);
        picture.height = static_cast<__u32>(wanted->Height);
        if (const __u32 code = PixelFormatCode(wanted->PixelFormat)) picture.pixelformat = code;
        picture.field = V4L2_FIELD_ANY;
        picture.bytesperline = 0;
        picture.sizeimage = 0;
        if (const int error = node.Do(VIDIOC_S_FMT, &setting)) return error;
        // Of single fields the driver counts the rows of one.
        if (TraitsOf(picture).Rows == PictureTraits::Fields::Single &&
            static_cast<int>(picture.height) == wanted->Height) {
            picture.height /= 2;
            if (const int error = node.Do(VIDIOC_S_FMT, &setting)) return error;
        }
    }
    // Drivers take the nearest they have.
    format.PixelFormat = PixelFormatName(picture.pixelformat);
    format.Width = static_cast<int>(picture.width);
    format.Height = static_cast<int>(picture.height);
    rowBytes = static_cast<int>(picture.bytesperline);
    traits = TraitsOf(picture);
    alternating = picture.field == V4L2_FIELD_ALTERNATE;
    AskPixelShape();
    return format.PixelFormat.isEmpty() ? -EINVAL : 0;
}

// The driver tells it of pictures of their natural size only.
void V4l2Device::AskPixelShape() {
    v4l2_cropcap natural{};
    natural.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    if (!node.Ask(VIDIOC_CROPCAP, &natural)) return;
    const bool everyRow = traits.Rows != PictureTraits::Fields::Single;
    const QSize whole(format.Width, everyRow ? format.Height : format.Height * 2);
    const v4l2_rect& size = natural.defrect;
    if (whole != QSize(static_cast<int>(size.width), static_cast<int>(size.height))) return;
    const v4l2_fract& heightByWidth = natural.pixelaspect;
    if (heightByWidth.numerator == 0 || heightByWidth.denominator == 0) return;
    traits.PixelWidth = static_cast<int>(heightByWidth.denominator);
    traits.PixelHeight = static_cast<int>(heightByWidth.numerator);
}

// A camera that keeps its own rate is as good.
void V4l2Device::SetRate(double rate) {
    v4l2_streamparm parameters{};
    parameters.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    if (!node.Ask(VIDIOC_G_PARM, &parameters)) return;
    if (!(parameters.parm.capture.capability & V4L2_CAP_TIMEPERFRAME)) return;
    parameters.parm.capture.timeperframe = {
        .numerator = 1000, .denominator = static_cast<__u32>(std::lround(rate * 1000))};
    if (node.Ask(VIDIOC_S_PARM, &parameters)) format.Rate = rate;
}

int V4l2Device::MapBuffers() {
    v4l2_requestbuffers request{};
    request.count = bufferCount;
    request.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    request.memory = V4L2_MEMORY_MMAP;
    if (const int error = node.Do(VIDIOC_REQBUFS, &request)) return error;
    if (request.count < leastBuffers) return -ENOMEM;
    for (__u32 index = 0; index < request.count; ++index) {
        if (const int error = MapBuffer(index)) return error;
    }
    return 0;
}

int V4l2Device::MapBuffer(__u32 index) {
    v4l2_buffer buffer{};
    buffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    buffer.memory = V4L2_MEMORY_MMAP;
    buffer.index = index;
    if (const int error = node.Do(VIDIOC_QUERYBUF, &buffer)) return error;
    void* const start = mmap(nullptr, buffer.length, PROT_READ, MAP_SHARED, node.Descriptor(),
                             static_cast<off_t>(buffer.m.offset));
    if (start == MAP_FAILED) return -errno;
    mappings.push_back({start, buffer.length});
    return Enqueue(index);
}

int V4l2Device::Enqueue(__u32 index) {
    v4l2_buffer buffer{};
    buffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    buffer.memory = V4L2_MEMORY_MMAP;
    buffer.index = index;
    return node.Do(VIDIOC_QBUF, &buffer);
}

// Not one that was damaged on the bus, and always the same field: the two lie a row apart.
bool V4l2Device::Usable(const v4l2_buffer& filled) const {
    if (filled.flags & V4L2_BUF_FLAG_ERROR || filled.bytesused == 0) return false;
    return !alternating || filled.field != V4L2_FIELD_BOTTOM;
}

int V4l2Device::Take(VideoBuffer& buffer) {
    for (size_t tries = 0; tries < mappings.size(); ++tries) {
        v4l2_buffer filled{};
        filled.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        filled.memory = V4L2_MEMORY_MMAP;
        if (const int error = node.Do(VIDIOC_DQBUF, &filled)) return error;
        if (filled.index >= mappings.size()) return -EIO;
        if (Usable(filled)) {
            const Mapping& mapping = mappings[filled.index];
            buffer = {
                .Index = static_cast<int>(filled.index),
                .Bytes = static_cast<const uchar*>(mapping.Start),
                .Size = static_cast<qsizetype>(std::min<size_t>(filled.bytesused, mapping.Length))};
            return 0;
        }
        if (const int error = Enqueue(filled.index)) return error;
    }
    return -EAGAIN;
}

}  // namespace

std::shared_ptr<VideoDevice> OpenV4l2Device(const QString& address,
                                            const std::optional<CaptureFormat>& wanted,
                                            int& error) {
    auto device = std::make_shared<V4l2Device>(address);
    error = device->Start(wanted);
    if (error != 0) device.reset();
    return device;
}
