#include "platform/windows/filter_controls.h"
#include "support/data_rows.h"

// After the system's header.
#include <dshow.h>

#include <map>

// COM's classes have no virtual destructor: they are never deleted through their interfaces.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace {

constexpr long automatic = 1;
constexpr long byHand = 2;

struct Property {
    long Least, Most, Step, Default, Abilities, Value, Flags;
};

// One of a driver's two interfaces, with the properties that a test gives it.
template <class Interface>
class Side final : public Interface {
  public:
    std::map<long, Property> Properties;

    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }

    HRESULT WINAPI GetRange(long id, long* least, long* most, long* step, long* usual,
                            long* abilities) override {
        const auto found = Properties.find(id);
        if (found == Properties.end()) return E_PROP_ID_UNSUPPORTED;
        const Property& now = found->second;
        *least = now.Least;
        *most = now.Most;
        *step = now.Step;
        *usual = now.Default;
        *abilities = now.Abilities;
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

class Driver final : public IUnknown {
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
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }
};

}  // namespace

class TestFilterControls : public QObject {
    Q_OBJECT

  private slots:
    void controlsAreListed() {
        Driver driver;
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
        QCOMPARE(listed,
                 QStringList({"Brightness 16 -64..64 0 free", "WhiteBalanceAuto 1 0..1 0 free",
                              "WhiteBalance 4600 2800..6500 0 ruled", "PowerLine 2 0..2 3 free",
                              "ExposureAuto 0 0..1 2 free", "ExposurePowers -5 -13..-1 0 ruled",
                              "FocusAuto 0 0..1 0 free", "Focus 30 0..250 0 free",
                              "PanDegrees 5 -180..180 0 free", "IrisTenths 3 0..9 0 ruled"}));
    }

    void valuesAreTaken_data() {
        const Rows<QString, int, long, bool, bool, long, long> row;
        row("number", "Brightness", -64, VideoProcAmp_Brightness, false, true, -64, byHand);
        row("between steps", "Brightness", -43, VideoProcAmp_Brightness, false, true, -48, byHand);
        row("too much", "Brightness", 65, VideoProcAmp_Brightness, false, false, 16, byHand);
        row("ruled", "ExposurePowers", -3, CameraControl_Exposure, true, false, -5, automatic);
        row("exposure by hand", "ExposureAuto", 1, CameraControl_Exposure, true, true, -5, byHand);
        row("exposure of another system", "ExposureAuto", 3, CameraControl_Exposure, true, true, -5,
            automatic);
        row("degrees", "PanDegrees", 36, CameraControl_Pan, true, true, 36, byHand);
        row("another system's parts of degrees", "Pan", 36, CameraControl_Pan, true, false, 5,
            byHand);
        row("automatic on", "FocusAuto", 1, CameraControl_Focus, true, true, 30, automatic);
        row("automatic off", "WhiteBalanceAuto", 0, VideoProcAmp_WhiteBalance, false, true, 4600,
            byHand);
        row("automatic only", "IrisAuto", 0, CameraControl_Iris, true, false, 3, automatic);
        row("no automatic", "BrightnessAuto", 1, VideoProcAmp_Brightness, false, false, 16, byHand);
        row("unknown", "0x00980900", 1, VideoProcAmp_Brightness, false, false, 16, byHand);
    }
    void valuesAreTaken() {
        const auto [id, value, property, ofTheCamera, taken, after, flags] =
            Row<QString, int, long, bool, bool, long, long>();
        Driver driver;
        QCOMPARE(FilterControls::Set(driver, {id, value}), taken);
        const Property now =
            ofTheCamera ? driver.Camera.Properties[property] : driver.Picture.Properties[property];
        QCOMPARE(now.Value, after);
        QCOMPARE(now.Flags, flags);
    }
};

QTEST_APPLESS_MAIN(TestFilterControls)
#include "test_filter_controls.moc"
