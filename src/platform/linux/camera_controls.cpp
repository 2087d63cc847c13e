#include "platform/linux/camera_controls.h"

#include "platform/linux/video_node.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

struct KnownControl {
    __u32 Code;
    const char* Id;
};

// Those that every system has get words, which the windows translate.
constexpr std::array knownControls{
    KnownControl{V4L2_CID_BRIGHTNESS, "Brightness"},
    KnownControl{V4L2_CID_CONTRAST, "Contrast"},
    KnownControl{V4L2_CID_SATURATION, "Saturation"},
    KnownControl{V4L2_CID_HUE, "Hue"},
    KnownControl{V4L2_CID_HUE_AUTO, "HueAuto"},
    KnownControl{V4L2_CID_AUTO_WHITE_BALANCE, "WhiteBalanceAuto"},
    KnownControl{V4L2_CID_WHITE_BALANCE_TEMPERATURE, "WhiteBalance"},
    KnownControl{V4L2_CID_RED_BALANCE, "RedBalance"},
    KnownControl{V4L2_CID_BLUE_BALANCE, "BlueBalance"},
    KnownControl{V4L2_CID_GAMMA, "Gamma"},
    KnownControl{V4L2_CID_GAIN, "Gain"},
    KnownControl{V4L2_CID_AUTOGAIN, "GainAuto"},
    KnownControl{V4L2_CID_SHARPNESS, "Sharpness"},
    KnownControl{V4L2_CID_BACKLIGHT_COMPENSATION, "Backlight"},
    KnownControl{V4L2_CID_POWER_LINE_FREQUENCY, "PowerLine"},
    KnownControl{V4L2_CID_HFLIP, "MirrorHorizontal"},
    KnownControl{V4L2_CID_VFLIP, "MirrorVertical"},
    KnownControl{V4L2_CID_ROTATE, "Rotate"},
    KnownControl{V4L2_CID_COLORFX, "ColourEffect"},
    KnownControl{V4L2_CID_EXPOSURE_AUTO, "ExposureAuto"},
    KnownControl{V4L2_CID_EXPOSURE_ABSOLUTE, "Exposure"},
    KnownControl{V4L2_CID_EXPOSURE, "ExposureLevel"},
    KnownControl{V4L2_CID_EXPOSURE_AUTO_PRIORITY, "ExposurePriority"},
    KnownControl{V4L2_CID_AUTO_EXPOSURE_BIAS, "ExposureBias"},
    KnownControl{V4L2_CID_FOCUS_AUTO, "FocusAuto"},
    KnownControl{V4L2_CID_FOCUS_ABSOLUTE, "Focus"},
    KnownControl{V4L2_CID_ZOOM_ABSOLUTE, "Zoom"},
    KnownControl{V4L2_CID_PAN_ABSOLUTE, "Pan"},
    KnownControl{V4L2_CID_TILT_ABSOLUTE, "Tilt"},
    KnownControl{V4L2_CID_IRIS_ABSOLUTE, "Iris"},
};

// Sound, and what no published picture shows.
constexpr std::array noConcern{
    V4L2_CID_ALPHA_COMPONENT, V4L2_CID_AUDIO_VOLUME, V4L2_CID_AUDIO_BALANCE, V4L2_CID_AUDIO_BASS,
    V4L2_CID_AUDIO_TREBLE,    V4L2_CID_AUDIO_MUTE,   V4L2_CID_AUDIO_LOUDNESS};

constexpr int mostControls = 200;  // a driver that counts in a circle must not hold us up

QString IdOf(__u32 code) {
    const auto found = std::ranges::find(knownControls, code, &KnownControl::Code);
    if (found != knownControls.end()) return QString::fromLatin1(found->Id);
    return QStringLiteral("0x%1").arg(code, 8, 16, QLatin1Char('0'));
}

// 0 for a word that is none.
__u32 CodeOf(const QString& id) {
    const auto found = std::ranges::find_if(
        knownControls, [&id](const auto& known) { return id == QLatin1String(known.Id); });
    if (found != knownControls.end()) return found->Code;
    bool isNumber = false;
    const __u32 code = id.toUInt(&isNumber, 16);
    return isNumber ? code : 0;
}

std::optional<CameraControl::Form> FormOf(__u32 type) {
    switch (type) {
        case V4L2_CTRL_TYPE_INTEGER:
            return CameraControl::Form::Number;
        case V4L2_CTRL_TYPE_BOOLEAN:
            return CameraControl::Form::Switch;
        case V4L2_CTRL_TYPE_MENU:
        case V4L2_CTRL_TYPE_INTEGER_MENU:
            return CameraControl::Form::Menu;
        default:
            return std::nullopt;
    }
}

bool ForTheOperator(const v4l2_queryctrl& query) {
    constexpr __u32 never =
        V4L2_CTRL_FLAG_DISABLED | V4L2_CTRL_FLAG_READ_ONLY | V4L2_CTRL_FLAG_WRITE_ONLY;
    if (query.flags & never || std::ranges::count(noConcern, query.id) > 0) return false;
    const auto family = V4L2_CTRL_ID2CLASS(query.id);
    return family == V4L2_CTRL_CLASS_USER || family == V4L2_CTRL_CLASS_CAMERA;
}

// A driver may leave places of a menu out.
QList<std::pair<int, QString>> Choices(const VideoNode& node, const v4l2_queryctrl& query) {
    QList<std::pair<int, QString>> choices;
    for (int index = query.minimum; index <= query.maximum && index < mostControls; ++index) {
        v4l2_querymenu entry{};
        entry.id = query.id;
        entry.index = static_cast<__u32>(index);
        if (!node.Ask(VIDIOC_QUERYMENU, &entry)) continue;
        const bool number = query.type == V4L2_CTRL_TYPE_INTEGER_MENU;
        choices.emplaceBack(index, number ? QString::number(entry.value) : DriverText(entry.name));
    }
    return choices;
}

std::optional<CameraControl> Control(const VideoNode& node, const v4l2_queryctrl& query) {
    const auto form = FormOf(query.type);
    if (!form || !ForTheOperator(query) || query.minimum >= query.maximum) return std::nullopt;
    v4l2_control now{.id = query.id, .value = 0};
    if (!node.Ask(VIDIOC_G_CTRL, &now)) return std::nullopt;
    CameraControl control{.Id = IdOf(query.id),
                          .Name = DriverText(query.name),
                          .Kind = *form,
                          .Least = query.minimum,
                          .Most = query.maximum,
                          .Step = std::max(query.step, 1),
                          .Default = query.default_value,
                          .Choices = {},
                          .Value = now.value};
    if (*form == CameraControl::Form::Menu) control.Choices = Choices(node, query);
    control.Adjustable = !(query.flags & (V4L2_CTRL_FLAG_INACTIVE | V4L2_CTRL_FLAG_GRABBED));
    return control;
}

bool SetOn(const VideoNode& node, const CameraControlValue& value) {
    v4l2_control wanted{.id = CodeOf(value.Id), .value = value.Value};
    v4l2_queryctrl query{};
    query.id = wanted.id;
    // Drivers make the nearest of a value that they do not have: of one that was kept for another
    // camera, the darkest picture.
    return wanted.id != 0 && node.Ask(VIDIOC_QUERYCTRL, &query) && value.Value >= query.minimum &&
           value.Value <= query.maximum && node.Ask(VIDIOC_S_CTRL, &wanted);
}

class NodeControls : public CameraControls {
  public:
    QList<CameraControl> List(const CaptureDevice& device) const override {
        const VideoNode node(device.Address);
        QList<CameraControl> controls;
        v4l2_queryctrl query{};
        query.id = V4L2_CTRL_FLAG_NEXT_CTRL;
        while (controls.size() < mostControls && node.Ask(VIDIOC_QUERYCTRL, &query)) {
            if (const auto control = Control(node, query)) controls << *control;
            query.id |= V4L2_CTRL_FLAG_NEXT_CTRL;
        }
        return controls;
    }

    QStringList KnownIds() const override {
        QStringList ids;
        for (const KnownControl& known : knownControls) ids << QString::fromLatin1(known.Id);
        return ids;
    }

    bool Set(const CaptureDevice& device, const CameraControlValue& value) override {
        return SetOn(VideoNode(device.Address), value);
    }
};

}  // namespace

std::unique_ptr<CameraControls> MakeCameraControls() {
    return std::make_unique<NodeControls>();
}

void AdjustV4l2Camera(const QString& address, const QList<CameraControlValue>& values) {
    const VideoNode node(address);
    SetCameraValues(values, [&node](const auto& value) { return SetOn(node, value); });
}
