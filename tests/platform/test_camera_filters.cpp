// What is made of a DirectShow driver's answers, and what it is told: Wine has no cameras.

#include "platform/com_stub.h"
#include "platform/windows/capture_devices.h"
#include "platform/windows/capture_filter.h"
#include "platform/windows/filter_controls.h"
#include "platform/windows/format_page.h"
#include "support/data_rows.h"

extern "C" {
#include <libavformat/avformat.h>
}

// After the system's header.
#include <dshow.h>
#include <dvdmedia.h>

#include <map>

namespace {

constexpr long automatic = 1;
constexpr long byHand = 2;

struct Property {
    long Least, Most, Step, Default, Abilities, Value, Flags;
};

// One of a driver's two interfaces, with the properties that a test gives it.
template <class Interface>
class Side final : public ComStub<Interface> {
  public:
    std::map<long, Property> Properties;

    HRESULT WINAPI GetRange(long id, long* least, long* most, long* step, long* usual,
                            long* abilities) override {
        const auto found = Properties.find(id);
        if (found == Properties.end()) return E_PROP_ID_UNSUPPORTED;
        std::tie(*least, *most, *step, *usual, *abilities) =
            std::tie(found->second.Least, found->second.Most, found->second.Step,
                     found->second.Default, found->second.Abilities);
        return S_OK;
    }
    HRESULT WINAPI Get(long id, long* value, long* flags) override {
        *value = Properties.at(id).Value;
        *flags = Properties.at(id).Flags;
        return S_OK;
    }
    HRESULT WINAPI Set(long id, long value, long flags) override {
        Properties.at(id).Value = value;
        Properties.at(id).Flags = flags;
        return S_OK;
    }
};

class Driver final : public ComStub<IUnknown> {
  public:
    Side<IAMVideoProcAmp> Picture;
    Side<IAMCameraControl> Camera;

    Driver() {
        Picture.Properties = {
            {VideoProcAmp_Brightness, {-64, 64, 8, 0, byHand, 16, byHand}},
            {VideoProcAmp_WhiteBalance, {2800, 6500, 1, 4000, automatic | byHand, 4600, automatic}},
            {VideoProcAmp_Gain, {0, 0, 0, 0, byHand, 0, byHand}},  // nothing to choose
            {13, {0, 2, 1, 1, byHand, 2, byHand}}};                // the lamps
        Camera.Properties = {
            {CameraControl_Exposure, {-13, -1, 1, -6, automatic | byHand, -5, automatic}},
            {CameraControl_Focus, {0, 250, 5, 0, automatic | byHand, 30, byHand}},
            {CameraControl_Pan, {-180, 180, 1, 0, byHand, 5, byHand}},
            {CameraControl_Iris, {0, 9, 1, 0, automatic, 3, automatic}}};
    }
    HRESULT WINAPI QueryInterface(REFIID id, void** found) override {
        *found = nullptr;
        if (id == __uuidof(IAMVideoProcAmp)) *found = &Picture;
        if (id == __uuidof(IAMCameraControl)) *found = &Camera;
        return *found ? S_OK : E_NOINTERFACE;
    }
};

// Every control with its value, its range, the number of its choices and whether it can be set.
QStringList Listed(Driver& driver) {
    QStringList listed;
    const auto controls = FilterControls::List(driver);
    for (const CameraControl& control : controls)
        listed << QString("%1 %2 %3..%4 %5 %6")
                      .arg(control.Id)
                      .arg(control.Value)
                      .arg(control.Least)
                      .arg(control.Most)
                      .arg(control.Choices.size())
                      .arg(control.Adjustable ? QString("free") : QString("ruled"));
    return listed;
}

struct PinFormat {
    LONG Width, Height;
    REFERENCE_TIME Interval;

    bool operator==(const PinFormat&) const = default;
};

AM_MEDIA_TYPE* TypeOf(const PinFormat& format) {
    auto* header = static_cast<VIDEOINFOHEADER2*>(CoTaskMemAlloc(sizeof(VIDEOINFOHEADER2)));
    *header = {};
    header->AvgTimePerFrame = format.Interval;
    header->bmiHeader.biWidth = format.Width;
    header->bmiHeader.biHeight = format.Height;
    header->bmiHeader.biCompression = MAKEFOURCC('Y', 'U', 'Y', '2');
    void* const bytes = header;
    auto* type = static_cast<AM_MEDIA_TYPE*>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    *type = {};
    type->majortype = MEDIATYPE_Video;
    type->formattype = FORMAT_VideoInfo2;
    type->cbFormat = sizeof *header;
    type->pbFormat = static_cast<BYTE*>(bytes);
    return type;
}

// A capture pin that offers a size with one rate and a size with a range of them.
class Pin final : public ComStub<IAMStreamConfig> {
  public:
    PinFormat Now{320, 240, 333'333};

    HRESULT WINAPI QueryInterface(REFIID id, void** found) override {
        *found = id == __uuidof(IAMStreamConfig) ? this : nullptr;
        return *found ? S_OK : E_NOINTERFACE;
    }
    HRESULT WINAPI SetFormat(AM_MEDIA_TYPE* type) override {
        const void* const bytes = type->pbFormat;
        const auto* header = static_cast<const VIDEOINFOHEADER2*>(bytes);
        Now = {header->bmiHeader.biWidth, header->bmiHeader.biHeight, header->AvgTimePerFrame};
        return S_OK;
    }
    HRESULT WINAPI GetFormat(AM_MEDIA_TYPE** type) override {
        *type = TypeOf(Now);
        return S_OK;
    }
    HRESULT WINAPI GetNumberOfCapabilities(int* count, int* size) override {
        *count = 2;
        *size = sizeof(VIDEO_STREAM_CONFIG_CAPS);
        return S_OK;
    }
    HRESULT WINAPI GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* abilities) override {
        *type = index == 0 ? TypeOf({320, 240, 0}) : TypeOf({640, 480, 0});
        void* const bytes = abilities;
        auto* const range = static_cast<VIDEO_STREAM_CONFIG_CAPS*>(bytes);
        range->MinFrameInterval = 333'370;
        range->MaxFrameInterval = index == 0 ? 333'370 : 1'000'000;
        return S_OK;
    }
};

CaptureFormat Raw(int width, int height, double rate) {
    return {width, height, rate, "yuyv422", false, {rate}};
}

}  // namespace

class TestCameraFilters : public QObject {
    Q_OBJECT

  private slots:
    void controlsAreListed() {
        Driver driver;
        QCOMPARE(Listed(driver),
                 QStringList({"Brightness 16 -64..64 0 free", "WhiteBalanceAuto 1 0..1 0 free",
                              "WhiteBalance 4600 2800..6500 0 ruled", "PowerLine 2 0..2 3 free",
                              "ExposureAuto 0 0..1 2 free", "ExposurePowers -5 -13..-1 0 ruled",
                              "FocusAuto 0 0..1 0 free", "Focus 30 0..250 0 free",
                              "PanDegrees 5 -180..180 0 free", "IrisTenths 3 0..9 0 ruled"}));
    }

    void valuesAreTaken_data() {
        const Rows<CameraControlValue, QStringList> row;  // what is listed otherwise then
        row("number", {"Brightness", -64}, {"Brightness -64 -64..64 0 free"});
        row("between steps", {"Brightness", -43}, {"Brightness -48 -64..64 0 free"});
        row("too much", {"Brightness", 65}, {});
        row("ruled", {"ExposurePowers", -3}, {});
        row("exposure by hand", {"ExposureAuto", 1},
            {"ExposureAuto 1 0..1 2 free", "ExposurePowers -5 -13..-1 0 free"});
        row("degrees", {"PanDegrees", 36}, {"PanDegrees 36 -180..180 0 free"});
        row("another system's parts of degrees", {"Pan", 36}, {});
        row("automatic on", {"FocusAuto", 1},
            {"FocusAuto 1 0..1 0 free", "Focus 30 0..250 0 ruled"});
        row("automatic off", {"WhiteBalanceAuto", 0},
            {"WhiteBalanceAuto 0 0..1 0 free", "WhiteBalance 4600 2800..6500 0 free"});
        row("automatic only", {"IrisAuto", 0}, {});
        row("no automatic", {"BrightnessAuto", 1}, {});
        row("unknown", {"0x00980900", 1}, {});
    }
    void valuesAreTaken() {
        const auto [value, changed] = Row<CameraControlValue, QStringList>();
        Driver driver;
        const QStringList before = Listed(driver);
        QCOMPARE(FilterControls::Set(driver, value), !changed.isEmpty());
        QStringList after = Listed(driver);
        after.removeIf([&before](const QString& line) { return before.contains(line); });
        QCOMPARE(after, changed);
    }

    // 3 is a form of the automatic on other systems.
    void exposureOfAnotherSystemIsAutomatic() {
        Driver driver;
        QVERIFY(FilterControls::Set(driver, {"ExposureAuto", 1}));
        QVERIFY(FilterControls::Set(driver, {"ExposureAuto", 3}));
        QVERIFY(Listed(driver).contains("ExposureAuto 0 0..1 2 free"));
    }

    void chosenFormatIsRead_data() {
        using Format = std::optional<CaptureFormat>;
        const Rows<Format, PinFormat, PinFormat, Format> row;  // in force, page begins, ends
        const PinFormat first{320, 240, 333'333};
        row("size", Raw(640, 480, 15), {640, 480, 666'667}, first, Raw(320, 240, 30));
        row("rate", Raw(640, 480, 29.996), {640, 480, 333'378}, {640, 480, 1'000'000},
            Raw(640, 480, 10));
        row("one rate", Raw(320, 240, 29.996), {320, 240, 333'370}, {320, 240, 333'370}, {});
        row("cancelled", Raw(640, 480, 15), {640, 480, 666'667}, {640, 480, 666'667}, {});
        row("rate not offered", Raw(640, 480, 60), first, first, {});
        row("size not offered", Raw(800, 600, 15), first, first, {});
        row("nothing in force", {}, first, {640, 480, 333'333}, Raw(640, 480, 30));
    }
    void chosenFormatIsRead() {
        using Format = std::optional<CaptureFormat>;
        const auto [present, begins, ends, chosen] = Row<Format, PinFormat, PinFormat, Format>();
        Pin pin;
        PinFormat shown{};
        const Format found = ChosenFormat(pin, present, [&] {
            shown = pin.Now;
            pin.Now = ends;
        });
        QVERIFY(shown == begins);
        QVERIFY(found == chosen);
    }

    void cameraFormats_data() {
        const Rows<DWORD, int, int, qint64, qint64, CaptureFormat> row;
        const auto code = [](const char* text) {
            DWORD number = 0;
            memcpy(&number, text, sizeof number);
            return number;
        };
        row("colours", BI_RGB, 24, -480, 333'333, 333'333, {640, 480, 30, "bgr24", false, {30}});
        row("raw", code("YUY2"), 16, 480, 333'370, 1'000'000,
            {640, 480, 29.996, "yuyv422", false, {10, 15, 20, 24, 25, 29.996}});
        row("packed", code("MJPG"), 24, 480, 166'666, 333'333,
            {640, 480, 60, "mjpeg", true, {30.001, 50, 60}});
        row("no rate", code("H264"), 0, 480, 0, 0, {640, 480, 0, "h264", true});
        row("no slowest rate", code("H264"), 0, 480, 400'000, 0,
            {640, 480, 25, "h264", true, {25}});
        row("strange", code("XYZ1"), 0, 480, 333'333, 0, {640, 480, 30, "", false, {30}});
        row("palette", BI_RGB, 8, 480, 333'333, 0, {640, 480, 30, "", false, {30}});
    }
    void cameraFormats() {
        const auto [compression, bits, height, shortest, longest, format] =
            Row<DWORD, int, int, qint64, qint64, CaptureFormat>();
        BITMAPINFOHEADER picture{};
        picture.biWidth = 640;
        picture.biHeight = height;
        picture.biBitCount = static_cast<WORD>(bits);
        picture.biCompression = compression;
        QCOMPARE(FormatOf(picture, shortest, longest), format);
    }

    void formatsOfSeveralEntriesAreOne() {
        QList<CaptureFormat> formats;
        AddFormat(formats, {640, 480, 15, "mjpeg", true, {15}});
        AddFormat(formats, {640, 480, 30, "mjpeg", true, {15, 30}});
        AddFormat(formats, {640, 480, 15, "yuyv422", false, {15}});
        AddFormat(formats, {640, 480, 15, "", false, {15}});
        QCOMPARE(formats, QList<CaptureFormat>({{640, 480, 30, "mjpeg", true, {15, 30}},
                                                {640, 480, 15, "yuyv422", false, {15}}}));
    }

    void camerasCanBeOpened() {
        const auto cameras = MakeCaptureDevices();
        for (const CaptureDevice& camera : cameras->List()) QCOMPARE(camera.Input, "dshow");
        QVERIFY(av_find_input_format("dshow"));
    }
};

QTEST_GUILESS_MAIN(TestCameraFilters)
#include "test_camera_filters.moc"
