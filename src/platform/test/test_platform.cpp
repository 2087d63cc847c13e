#include "platform/test/test_platform.h"

#include <utility>

void TestOnlineState::Set(bool nowConnected, Links nowLinks) {
    connected = nowConnected;
    links = nowLinks;
    emit Changed();
}

bool TestOnlineState::Connected() const {
    ++Asked;
    return connected;
}

void TestDialer::Dial(const QString& entry, std::function<void(int)> dialled) {
    Dialled << entry;
    open << std::move(dialled);
    if (Answers) QMetaObject::invokeMethod(this, &TestDialer::Answer, Qt::QueuedConnection);
}

void TestDialer::Answer() {
    for (const auto& dialled : std::exchange(open, {})) dialled(++lastHandle);
}

QList<CaptureFormat> TestCaptureDevices::Formats(const CaptureDevice& device) const {
    return Devices.contains(device) ? DeviceFormats : QList<CaptureFormat>();
}

bool TestCameraControls::Set(const CaptureDevice&, const CameraControlValue& value) {
    for (CameraControl& control : Controls) {
        if (control.Id != value.Id) continue;
        if (!control.Adjustable || value.Value < control.Least || value.Value > control.Most)
            return false;
        control.Value = value.Value;
        Changed();
        return true;
    }
    return false;
}

int TestCameraControls::Value(const QString& id) const {
    for (const CameraControl& control : Controls)
        if (control.Id == id) return control.Value;
    return -1;
}

TestPlatform MakeTestPlatform() {
    auto online = std::make_unique<TestOnlineState>();
    auto dial = std::make_unique<TestDialer>();
    auto cameras = std::make_unique<TestCaptureDevices>();
    auto controls = std::make_unique<TestCameraControls>();
    auto sounds = std::make_unique<RecordingSound>();
    auto autostart = std::make_unique<RecordingAutostart>();
    TestOnlineState& onlineRef = *online;
    TestDialer& dialRef = *dial;
    TestCaptureDevices& camerasRef = *cameras;
    TestCameraControls& controlsRef = *controls;
    RecordingSound& soundsRef = *sounds;
    RecordingAutostart& autostartRef = *autostart;
    return {{.Online = std::move(online),
             .Dial = std::move(dial),
             .Cameras = std::move(cameras),
             .Controls = std::move(controls),
             .Sounds = std::move(sounds),
             .Autostart = std::move(autostart)},
            onlineRef,
            dialRef,
            camerasRef,
            controlsRef,
            soundsRef,
            autostartRef};
}
