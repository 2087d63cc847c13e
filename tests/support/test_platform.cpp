#include "support/test_platform.h"

#include <algorithm>
#include <utility>

void TestOnlineState::Set(bool nowConnected, Links nowLinks) {
    if (nowConnected == connected && nowLinks == links) return;
    connected = nowConnected;
    links = nowLinks;
    emit Changed();
}

int TestDialer::Dial(const QString& entry, std::function<void(int)> dialled) {
    auto line = std::ranges::find(lines, entry, &Line::Entry);
    if (line == lines.end()) {
        Dialled << entry;
        const int handle = static_cast<int>(Dialled.size());
        if (!EntryList.contains(entry)) return handle;
        line = lines.insert(handle, {.Entry = entry});
    }
    line->Waiting.push_back(std::move(dialled));
    if (Answers || line->Stands)
        QMetaObject::invokeMethod(
            this, [this, handle = line.key()] { Report(handle); }, Qt::QueuedConnection);
    return line.key();
}

void TestDialer::Report(int handle) {
    const auto line = lines.find(handle);
    if (line == lines.end()) return;
    line->Stands = true;
    for (const auto& dialled : std::exchange(line->Waiting, {})) dialled(handle);
}

void TestDialer::Answer() {
    for (const int handle : lines.keys()) Report(handle);
}

void TestDialer::HangUp(int handle) {
    if (lines.remove(handle) > 0) HungUp << handle;
}

QList<CaptureFormat> TestCaptureDevices::Formats(const CaptureDevice& device) const {
    return Devices.contains(device) ? DeviceFormats : QList<CaptureFormat>();
}

bool TestCameraControls::Set(const CaptureDevice& device, const CameraControlValue& value) {
    if (!Has(device)) return false;
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
