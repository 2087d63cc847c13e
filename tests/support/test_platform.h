#pragma once

#include "platform/platform.h"

#include <QMap>

#include <functional>
#include <vector>

// The third set of services, beside the systems' own: states that tests set, and records of what
// the program asked for.

class TestOnlineState : public OnlineState {
  public:
    int Forced = 0;     // how often ForceOnline was called
    bool Near = false;  // there is a network, be it without a way out

    // Sets the state and tells those who listen when it is another one.
    void Set(bool nowConnected, Links nowLinks = {});

    [[nodiscard]] bool Connected() const override { return connected; }
    [[nodiscard]] bool Reachable() const override { return connected || Near; }
    [[nodiscard]] Links Connection() const override { return links; }
    void ForceOnline() override { ++Forced; }

  private:
    bool connected = false;
    Links links;
};

// Dials of its entries succeed at once unless Answers is cleared; Answer() then ends them late.
class TestDialer : public Dialer {
  public:
    QStringList EntryList;
    QStringList Dialled;  // entries in the order of dialling; their handles count from 1
    QList<int> HungUp;    // handles
    bool Answers = true;

    [[nodiscard]] QStringList Entries() const override { return EntryList; }
    int Dial(const QString& entry, std::function<void(int)> dialled) override;
    void HangUp(int handle) override;

    // The dials that are still open stand now.
    void Answer();

  private:
    struct Line {
        QString Entry;
        bool Stands = false;
        std::vector<std::function<void(int)>> Waiting = {};
    };
    void Report(int handle);

    QMap<int, Line> lines;  // by handle
};

class TestCaptureDevices : public CaptureDevices {
  public:
    QList<CaptureDevice> Devices;
    QList<CaptureFormat> DeviceFormats;  // of every device
    // What the operator chooses in the driver's window, which begins with this; none without.
    std::function<std::optional<CaptureFormat>(const std::optional<CaptureFormat>&)> OwnPages;

    [[nodiscard]] QList<CaptureDevice> List() const override { return Devices; }
    [[nodiscard]] QList<CaptureFormat> Formats(const CaptureDevice& device) const override;
    [[nodiscard]] bool HasOwnPages(const CaptureDevice&) const override { return !!OwnPages; }
    [[nodiscard]] std::optional<CaptureFormat> ShowOwnPages(
        const CaptureDevice&, const std::optional<CaptureFormat>& present,
        quintptr) const override {
        return OwnPages(present);
    }
};

// The controls of every camera, which take every value in their range while they are adjustable.
class TestCameraControls : public CameraControls {
  public:
    explicit TestCameraControls(const TestCaptureDevices& devices) : cameras(devices) {}

    QList<CameraControl> Controls;
    // Called after each value that was taken, so that a test can let one control rule another.
    std::function<void()> Changed = [] {};
    std::function<void()> OwnPages;  // what the operator does in them; none without

    [[nodiscard]] QList<CameraControl> List(const CaptureDevice& device) const override {
        return Has(device) ? Controls : QList<CameraControl>();
    }
    [[nodiscard]] bool Set(const CaptureDevice& device, const CameraControlValue& value) override;
    [[nodiscard]] bool HasOwnPages(const CaptureDevice& device) const override {
        return OwnPages && Has(device);
    }
    void ShowOwnPages(const CaptureDevice&, quintptr) override { OwnPages(); }
    [[nodiscard]] int Value(const QString& id) const;

  private:
    [[nodiscard]] bool Has(const CaptureDevice& device) const {
        return cameras.Devices.contains(device);
    }

    const TestCaptureDevices& cameras;
};

class SilentSound : public Sound {
  public:
    void Play(const QString& /*file*/) override {}
    void SetVolume(quint32 /*volume*/) override {}
};

class RecordingAutostart : public AutostartEntry {
  public:
    QStringList Line;  // the program and its arguments; empty: no entry
    bool Works = true;

    [[nodiscard]] bool Write(const QString& program, const QStringList& arguments) override {
        if (Works) Line = QStringList{program} + arguments;
        return Works;
    }
    [[nodiscard]] bool Remove() override {
        if (Works) Line.clear();
        return Works;
    }
    [[nodiscard]] QString Place() const override { return "the autostart list"; }
};

// A platform, and its parts by the names that tests use; they live as long as Services. Offline,
// without dial-up entries and without cameras, until a test says otherwise.
struct TestPlatform {
    Platform Services;
    TestOnlineState& Online = Fill(Services.Online, std::make_unique<TestOnlineState>());
    TestDialer& Dial = Fill(Services.Dial, std::make_unique<TestDialer>());
    TestCaptureDevices& Cameras = Fill(Services.Cameras, std::make_unique<TestCaptureDevices>());
    TestCameraControls& Controls =
        Fill(Services.Controls, std::make_unique<TestCameraControls>(Cameras));
    SilentSound& Sounds = Fill(Services.Sounds, std::make_unique<SilentSound>());
    RecordingAutostart& Autostart =
        Fill(Services.Autostart, std::make_unique<RecordingAutostart>());

  private:
    template <class Place, class Own>
    static Own& Fill(Place& place, std::unique_ptr<Own> own) {
        Own& filled = *own;
        place = std::move(own);
        return filled;
    }
};
