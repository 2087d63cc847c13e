#include "platform/windows/filter_controls.h"

// After the system's header.
#include <dshow.h>

#include <algorithm>
#include <array>
#include <optional>

namespace {

enum class Side { Picture, Camera };

struct KnownControl {
    const char* Id;
    Side Of;
    long Property;
    const char* Unit = "";  // where other systems count the values otherwise
};

constexpr long powerLineFrequency = 13;  // newer than the header

constexpr std::array knownControls{
    KnownControl{"Brightness", Side::Picture, VideoProcAmp_Brightness},
    KnownControl{"Contrast", Side::Picture, VideoProcAmp_Contrast},
    KnownControl{"Saturation", Side::Picture, VideoProcAmp_Saturation},
    KnownControl{"Hue", Side::Picture, VideoProcAmp_Hue},
    KnownControl{"WhiteBalance", Side::Picture, VideoProcAmp_WhiteBalance},
    KnownControl{"Gamma", Side::Picture, VideoProcAmp_Gamma},
    KnownControl{"Gain", Side::Picture, VideoProcAmp_Gain},
    KnownControl{"PowerLine", Side::Picture, powerLineFrequency},
    KnownControl{"Sharpness", Side::Picture, VideoProcAmp_Sharpness},
    KnownControl{"Backlight", Side::Picture, VideoProcAmp_BacklightCompensation},
    KnownControl{"Exposure", Side::Camera, CameraControl_Exposure, "Powers"},
    KnownControl{"Focus", Side::Camera, CameraControl_Focus},
    KnownControl{"Zoom", Side::Camera, CameraControl_Zoom},
    KnownControl{"Pan", Side::Camera, CameraControl_Pan, "Degrees"},
    KnownControl{"Tilt", Side::Camera, CameraControl_Tilt, "Degrees"},
    KnownControl{"Iris", Side::Camera, CameraControl_Iris, "Tenths"},
};

// IAMVideoProcAmp and IAMCameraControl have the same numbers for them.
constexpr long automatic = VideoProcAmp_Flags_Auto;
constexpr long byHand = VideoProcAmp_Flags_Manual;

QString ValueId(const KnownControl& known) {
    return QString::fromLatin1(known.Id) + QLatin1String(known.Unit);
}

QString SwitchId(const KnownControl& known) {
    return QString::fromLatin1(known.Id) + QStringLiteral("Auto");
}

// On Linux the automatic of the exposure has several forms; 1 is "by hand" there as well.
constexpr int exposureByHand = 1;

bool IsExposure(const KnownControl& known) {
    return known.Of == Side::Camera && known.Property == CameraControl_Exposure;
}

struct Reading {
    long Least = 0;
    long Most = 0;
    long Step = 1;
    long Default = 0;
    long Abilities = 0;
    long Value = 0;
    long Flags = 0;

    [[nodiscard]] bool HasSwitch() const { return (Abilities & automatic) && (Abilities & byHand); }
    [[nodiscard]] bool IsAutomatic() const {
        return (Abilities & automatic) && (Flags & automatic);
    }
    [[nodiscard]] bool Adjustable() const { return (Abilities & byHand) && !IsAutomatic(); }
};

// Calls either interface: their routines are alike.
template <class Call>
bool Succeeds(IUnknown& filter, Side side, const Call& call) {
    if (side == Side::Picture) {
        const auto driver = ComQuery<IAMVideoProcAmp>(filter);
        return driver && SUCCEEDED(call(*driver));
    }
    const auto driver = ComQuery<IAMCameraControl>(filter);
    return driver && SUCCEEDED(call(*driver));
}

std::optional<Reading> Ask(IUnknown& filter, const KnownControl& known) {
    Reading now;
    const bool told = Succeeds(filter, known.Of, [&](auto& driver) {
        const HRESULT range = driver.GetRange(known.Property, &now.Least, &now.Most, &now.Step,
                                              &now.Default, &now.Abilities);
        return FAILED(range) ? range : driver.Get(known.Property, &now.Value, &now.Flags);
    });
    if (!told || now.Least >= now.Most) return std::nullopt;
    now.Step = std::max(now.Step, 1L);
    return now;
}

bool Tell(IUnknown& filter, const KnownControl& known, long value, long flag) {
    return Succeeds(filter, known.Of,
                    [&](auto& driver) { return driver.Set(known.Property, value, flag); });
}

CameraControl ControlOf(const KnownControl& known, const Reading& now) {
    CameraControl control{.Id = ValueId(known),
                          .Name = QString::fromLatin1(known.Id),
                          .Least = static_cast<int>(now.Least),
                          .Most = static_cast<int>(now.Most),
                          .Step = static_cast<int>(now.Step),
                          .Default = static_cast<int>(now.Default),
                          .Value = static_cast<int>(now.Value),
                          .Adjustable = now.Adjustable()};
    if (known.Property == powerLineFrequency) {
        control.Kind = CameraControl::Form::Menu;
        for (int value = control.Least; value <= std::min(control.Most, 3); ++value)
            control.Choices.emplaceBack(value, QString::number(value));
    }
    return control;
}

// Drivers do not tell whether the automatic is on by itself, but with cameras that have one it is.
CameraControl SwitchOf(const KnownControl& known, const Reading& now) {
    CameraControl control{.Id = SwitchId(known),
                          .Name = QString::fromLatin1(known.Id) + QStringLiteral(" (automatic)"),
                          .Kind = CameraControl::Form::Switch,
                          .Default = 1,
                          .Value = now.IsAutomatic() ? 1 : 0};
    if (IsExposure(known)) {
        control.Kind = CameraControl::Form::Menu;
        control.Choices = {{0, QStringLiteral("automatic")},
                           {exposureByHand, QStringLiteral("by hand")}};
        control.Default = 0;
        control.Value = now.IsAutomatic() ? 0 : exposureByHand;
    }
    return control;
}

bool SetSwitch(IUnknown& filter, const KnownControl& known, int value) {
    const auto now = Ask(filter, known);
    if (!now || !now->HasSwitch()) return false;
    const bool on = IsExposure(known) ? value != exposureByHand : value != 0;
    return Tell(filter, known, now->Value, on ? automatic : byHand);
}

bool SetValue(IUnknown& filter, const KnownControl& known, int value) {
    const auto now = Ask(filter, known);
    if (!now || !now->Adjustable() || value < now->Least || value > now->Most) return false;
    // Some drivers refuse what lies between two steps.
    return Tell(filter, known, value - (value - now->Least) % now->Step, byHand);
}

}  // namespace

QList<CameraControl> FilterControls::List(IUnknown& filter) {
    QList<CameraControl> controls;
    for (const KnownControl& known : knownControls) {
        const auto now = Ask(filter, known);
        if (!now) continue;
        if (now->HasSwitch()) controls << SwitchOf(known, *now);
        controls << ControlOf(known, *now);
    }
    return controls;
}

QStringList FilterControls::KnownIds() {
    QStringList ids;
    for (const KnownControl& known : knownControls) ids << SwitchId(known) << ValueId(known);
    return ids;
}

bool FilterControls::Set(IUnknown& filter, const CameraControlValue& value) {
    for (const KnownControl& known : knownControls) {
        if (value.Id == ValueId(known)) return SetValue(filter, known, value.Value);
        if (value.Id == SwitchId(known)) return SetSwitch(filter, known, value.Value);
    }
    return false;
}
