#include "platform/linux/capture_devices.h"

#include "platform/frame_rates.h"
#include "platform/linux/camera_controls.h"
#include "platform/linux/v4l2_device.h"
#include "platform/linux/video_node.h"

#include <QDir>
#include <QSize>

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>

namespace {

// The camera behind a node; nothing when the node is not one that delivers single-plane pictures.
std::optional<CaptureDevice> Camera(const QString& path) {
    const VideoNode node(path);
    v4l2_capability capability{};
    if (!node.Ask(VIDIOC_QUERYCAP, &capability)) return std::nullopt;
    const __u32 abilities = capability.capabilities & V4L2_CAP_DEVICE_CAPS
                                ? capability.device_caps
                                : capability.capabilities;
    if (!(abilities & V4L2_CAP_VIDEO_CAPTURE) || !(abilities & V4L2_CAP_STREAMING))
        return std::nullopt;
    return CaptureDevice{.Name = DriverText(capability.card),
                         .Connection = DriverText(capability.bus_info),
                         .Input = QStringLiteral("v4l2"),
                         .Address = path,
                         .Open = OpenV4l2Device,
                         .Adjust = AdjustV4l2Camera};
}

double RateOf(const v4l2_fract& interval) {
    return interval.numerator > 0 ? double(interval.denominator) / interval.numerator : 0;
}

// The rates of a size, pictures per second; none when the driver does not tell.
QList<double> Rates(const VideoNode& node, __u32 code, QSize size) {
    QList<double> rates;
    v4l2_frmivalenum entry{};
    entry.pixel_format = code;
    entry.width = static_cast<__u32>(size.width());
    entry.height = static_cast<__u32>(size.height());
    for (; node.Ask(VIDIOC_ENUM_FRAMEINTERVALS, &entry); ++entry.index) {
        if (entry.type != V4L2_FRMIVAL_TYPE_DISCRETE)
            return RatesBetween(RateOf(entry.stepwise.max), RateOf(entry.stepwise.min));
        rates << RateOf(entry.discrete);
    }
    return rates;
}

bool Reaches(__u32 value, __u32 least, __u32 most, __u32 step) {
    return value >= least && value <= most && (value - least) % std::max(step, 1U) == 0;
}

// The usual sizes among a range's, and its largest one.
QList<QSize> SizesInRange(const v4l2_frmsize_stepwise& range) {
    static constexpr std::array usual{
        std::pair{160U, 120U},   std::pair{320U, 180U},   std::pair{320U, 240U},
        std::pair{352U, 288U},   std::pair{640U, 360U},   std::pair{640U, 480U},
        std::pair{720U, 576U},   std::pair{800U, 600U},   std::pair{1024U, 768U},
        std::pair{1280U, 720U},  std::pair{1280U, 1024U}, std::pair{1600U, 1200U},
        std::pair{1920U, 1080U}, std::pair{2560U, 1440U}, std::pair{3840U, 2160U}};
    QList<QSize> sizes;
    for (const auto& [width, height] : usual) {
        if (Reaches(width, range.min_width, range.max_width, range.step_width) &&
            Reaches(height, range.min_height, range.max_height, range.step_height))
            sizes << QSize(static_cast<int>(width), static_cast<int>(height));
    }
    const QSize largest(static_cast<int>(range.max_width), static_cast<int>(range.max_height));
    if (!sizes.contains(largest)) sizes << largest;
    return sizes;
}

QList<QSize> Sizes(const VideoNode& node, __u32 code) {
    QList<QSize> sizes;
    v4l2_frmsizeenum entry{};
    entry.pixel_format = code;
    for (; node.Ask(VIDIOC_ENUM_FRAMESIZES, &entry); ++entry.index) {
        if (entry.type != V4L2_FRMSIZE_TYPE_DISCRETE) return SizesInRange(entry.stepwise);
        sizes << QSize(static_cast<int>(entry.discrete.width),
                       static_cast<int>(entry.discrete.height));
    }
    return sizes;
}

class VideoNodes : public CaptureDevices {
  public:
    QList<CaptureDevice> List() const override {
        QList<std::pair<int, CaptureDevice>> found;
        const QDir folder(QStringLiteral("/dev"));
        const QStringList names =
            folder.entryList({QStringLiteral("video*")}, QDir::System | QDir::Files);
        for (const QString& name : names) {
            bool isNumber = false;
            const int number = name.mid(5).toInt(&isNumber);
            if (!isNumber) continue;
            if (auto camera = Camera(folder.filePath(name))) found.emplaceBack(number, *camera);
        }
        // Numbers are given out in the order in which drivers happen to load; the place where a
        // camera is plugged in stays. A camera with several nodes keeps their order.
        std::ranges::sort(found, [](const auto& a, const auto& b) {
            return std::tie(a.second.Connection, a.first) < std::tie(b.second.Connection, b.first);
        });
        QList<CaptureDevice> cameras;
        for (const auto& entry : found) cameras << entry.second;
        return cameras;
    }

    QList<CaptureFormat> Formats(const CaptureDevice& device) const override {
        const VideoNode node(device.Address);
        QList<CaptureFormat> formats;
        v4l2_fmtdesc entry{};
        entry.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        for (; node.Ask(VIDIOC_ENUM_FMT, &entry); ++entry.index) {
            const QString name = PixelFormatName(entry.pixelformat);
            if (name.isEmpty()) continue;
            for (const QSize& size : Sizes(node, entry.pixelformat)) {
                const QList<double> rates = Rates(node, entry.pixelformat, size);
                formats << CaptureFormat{
                    .Width = size.width(),
                    .Height = size.height(),
                    .Rate = rates.isEmpty() ? 0 : *std::ranges::max_element(rates),
                    .PixelFormat = name,
                    .Compressed = (entry.flags & V4L2_FMT_FLAG_COMPRESSED) != 0,
                    .Rates = rates};
            }
        }
        return formats;
    }
};

}  // namespace

std::unique_ptr<CaptureDevices> MakeCaptureDevices() {
    return std::make_unique<VideoNodes>();
}
