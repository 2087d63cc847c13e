// The capture control and real V4L2 cameras. Runs on a machine with two of the kernel's virtual
// cameras, which camera-machine starts; there it may pull them out.

#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "platform/linux/camera_controls.h"
#include "platform/linux/capture_devices.h"
#include "platform/linux/video_node.h"
#include "platform/system_clock.h"
#include "support/data_rows.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QSet>
#include <QSignalSpy>

#include <algorithm>
#include <numeric>

namespace {

struct Bench {
    SystemClock Time;
    Waiting Wait{Time};
    std::unique_ptr<CaptureDevices> Devices = MakeCaptureDevices();
    ezVidCap Control{Wait, *Devices};

    explicit Bench(int index) {
        (void)Control.DriverNames();
        Control.SetDriverIndex(index);
    }
};

// Pulls the camera out, or puts it back.
bool Plug(bool in) {
    QFile file(in ? QStringLiteral("/sys/bus/platform/drivers/vivid/bind")
                  : QStringLiteral("/sys/bus/platform/drivers/vivid/unbind"));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write("vivid.0") > 0;
}

QByteArray Print(const QImage& picture) {
    return QCryptographicHash::hash(QByteArrayView(picture.constBits(), picture.sizeInBytes()),
                                    QCryptographicHash::Sha1);
}

// Mean of all bytes of the newest picture; -1 without one.
int Brightness(ezVidCap& control) {
    if (!control.GrabFrame() || !control.GrabFrame()) return -1;
    const QImage& picture = control.Frame();
    const uchar* const bytes = picture.constBits();
    const qint64 sum = std::accumulate(bytes, bytes + picture.sizeInBytes(), qint64(0));
    return static_cast<int>(sum / picture.sizeInBytes());
}

CameraControl Named(const QList<CameraControl>& controls, const QString& id) {
    const auto found = std::ranges::find(controls, id, &CameraControl::Id);
    return found == controls.end() ? CameraControl() : *found;
}

// A control of the driver's own, by its name.
bool SetDriver(const VideoNode& node, const QString& name, int value) {
    v4l2_queryctrl query{};
    do {
        query.id |= V4L2_CTRL_FLAG_NEXT_CTRL;
        if (!node.Ask(VIDIOC_QUERYCTRL, &query)) return false;
    } while (DriverText(query.name) != name);
    v4l2_control wanted{.id = query.id, .value = value};
    return node.Ask(VIDIOC_S_CTRL, &wanted);
}

// The largest difference of two rows of a picture's bytes.
int Difference(const uchar* row, const uchar* other, int width) {
    int most = 0;
    for (int at = 0; at < width * 3; ++at) most = std::max(most, std::abs(row[at] - other[at]));
    return most;
}

// Whether the picture has colours in every band of rows: the pattern is upright bars, so that rows
// that were never delivered stand out.
bool HasAllRows(const QImage& picture) {
    for (int y = 0; y < picture.height(); y += picture.height() / 18) {
        const uchar* const row = picture.constScanLine(y);
        const auto [least, most] = std::minmax_element(row, row + picture.width() * 3);
        if (*most - *least < 100) return false;
    }
    return true;
}

}  // namespace

class CameraTest : public QObject {
    Q_OBJECT

  private slots:
    void CamerasAndFormatsAreListed() {
        const auto devices = MakeCaptureDevices();
        const QList<CaptureDevice> list = devices->List();
        QCOMPARE(list.size(), 2);
        QCOMPARE(list[0].Connection, QStringLiteral("platform:vivid-000"));
        QCOMPARE(list[1].Connection, QStringLiteral("platform:vivid-001"));
        QCOMPARE(Bench(0).Control.DriverNames(), QStringList({"vivid", "vivid (2)"}));
        const auto formats = devices->Formats(list[0]);
        for (const auto& [size, pixels] :
             {std::pair(QSize(1280, 720), "yuyv422"), std::pair(QSize(640, 360), "bgr24")})
            QVERIFY(std::ranges::any_of(formats, [&](const CaptureFormat& format) {
                return QSize(format.Width, format.Height) == size &&
                       format.PixelFormat == QLatin1String(pixels) && !format.Compressed &&
                       format.Rate >= 1;
            }));
    }

    void PicturesAreNewAndWhole_data() {
        const Rows<int, QString, QSize> row;
        row("size asked for", 0, "640x360@15", {640, 360});
        row("small", 0, "320x180", {320, 180});
        row("second camera", 1, "640x360", {640, 360});
        row("largest", 0, "", {1920, 1080});
    }
    void PicturesAreNewAndWhole() {
        const auto [camera, format, size] = Row<int, QString, QSize>();
        Bench bench(camera);
        bench.Control.SetCaptureFormat(format);
        QSet<QByteArray> seen;
        QElapsedTimer time;
        for (int i = 0; i < 5; ++i) {
            time.start();
            QVERIFY2(bench.Control.GrabFrame(), qPrintable(bench.Control.Fault()));
            qInfo("picture after %lld ms", static_cast<long long>(time.elapsed()));
            QCOMPARE(QSize(bench.Control.Width(), bench.Control.Height()), size);
            QVERIFY(HasAllRows(bench.Control.Frame()));
            seen << Print(bench.Control.Frame());
        }
        QCOMPARE(seen.size(), 5);
    }

    void CamerasAreAdjusted() {
        const QList<CaptureDevice> devices = MakeCaptureDevices()->List();
        const auto controls = MakeCameraControls();
        Bench bench(1);
        bench.Control.SetCaptureFormat(QStringLiteral("320x180"));
        bench.Control.SetAdjustments(
            {"vivid|Contrast|1", "vivid (2)|NoSuchThing|1", "vivid (2)|Contrast|77"});
        const int before = Brightness(bench.Control);
        QCOMPARE(Named(controls->List(devices[1]), "Contrast").Value, 77);
        QCOMPARE(Named(controls->List(devices[0]), "Contrast").Value, 128);
        // While it is open.
        QVERIFY(controls->Set(devices[1], {"Brightness", 220}));
        QTRY_VERIFY_WITH_TIMEOUT(Brightness(bench.Control) > before + 30, 20'000);
        QVERIFY(controls->Set(devices[1], {"Brightness", 128}));
        QVERIFY(controls->Set(devices[1], {"Contrast", 128}));
    }

    void DriverTellsOfColours() {
        const VideoNode node(MakeCaptureDevices()->List()[1].Address);
        QImage known;
        for (const auto& [encoding, range] :
             {std::pair(V4L2_YCBCR_ENC_DEFAULT, V4L2_QUANTIZATION_DEFAULT),
              std::pair(V4L2_YCBCR_ENC_709, V4L2_QUANTIZATION_DEFAULT),
              std::pair(V4L2_YCBCR_ENC_BT2020, V4L2_QUANTIZATION_LIM_RANGE),
              std::pair(V4L2_YCBCR_ENC_601, V4L2_QUANTIZATION_FULL_RANGE)}) {
            QVERIFY(SetDriver(node, "Y'CbCr Encoding", encoding));
            QVERIFY(SetDriver(node, "Quantization", range));
            Bench bench(1);
            bench.Control.SetCaptureFormat(QStringLiteral("320x180"));
            QVERIFY(bench.Control.GrabFrame());
            if (known.isNull()) known = bench.Control.Frame();
            const QImage& frame = bench.Control.Frame();
            QCOMPARE(frame.size(), known.size());
            const int last = known.height() - 1;
            const int most =
                Difference(frame.constScanLine(last), known.constScanLine(last), known.width());
            QVERIFY2(most < 12, qPrintable(QString::number(most)));
        }
        QVERIFY(SetDriver(node, "Y'CbCr Encoding", V4L2_YCBCR_ENC_DEFAULT));
        QVERIFY(SetDriver(node, "Quantization", V4L2_QUANTIZATION_DEFAULT));
    }

    void InterlacedPicturesHaveNoCombs_data() {
        const Rows<int, QString, QSize> row;  // of the driver's inputs
        row("television", 2, "720x576", {786, 576});
        row("one field at a time", 3, "1920x1080", {1920, 1080});
    }
    // Upright bars that move to the right.
    void InterlacedPicturesHaveNoCombs() {
        const auto [input, format, size] = Row<int, QString, QSize>();
        const VideoNode node(MakeCaptureDevices()->List()[1].Address);
        const auto select = [&](int number) { return node.Ask(VIDIOC_S_INPUT, &number); };
        QVERIFY(select(input));
        QVERIFY(SetDriver(node, "Horizontal Movement", 6));
        v4l2_enum_dv_timings timings{};
        while (node.Ask(VIDIOC_ENUM_DV_TIMINGS, &timings) &&
               !(timings.timings.bt.interlaced && timings.timings.bt.height == 1080))
            ++timings.index;
        QCOMPARE(node.Ask(VIDIOC_S_DV_TIMINGS, &timings.timings), input == 3);
        {
            Bench bench(1);
            bench.Control.SetCaptureFormat(format);
            for (int i = 0; i < 3; ++i) QVERIFY(bench.Control.GrabFrame());
            QCOMPARE(QSize(bench.Control.Width(), bench.Control.Height()), size);
            const QImage& frame = bench.Control.Frame();
            int most = 0;
            // Above that stands the driver's text.
            const int first = frame.height() * 2 / 3;
            for (int y = first; y < frame.height(); ++y)
                most = std::max(most, Difference(frame.constScanLine(y), frame.constScanLine(first),
                                                 frame.width()));
            QVERIFY2(most < 12, qPrintable(QString::number(most)));
        }
        QVERIFY(SetDriver(node, "Horizontal Movement", 3));
        QVERIFY(select(0));
    }

    void SecondOpenerIsTold() {
        Bench first(0);
        first.Control.SetCaptureFormat("320x180");
        QVERIFY(first.Control.GrabFrame());
        Bench second(0);
        second.Control.SetCaptureFormat("640x360");
        QVERIFY(!second.Control.GrabFrame());
        QCOMPARE(second.Control.Fault(),
                 QStringLiteral("Camera 'vivid' is in use by another program"));
        QVERIFY(first.Control.GrabFrame());
        first.Control.SetEnabled(false);
        // Until the first has closed it, which nobody is told of.
        QTRY_VERIFY_WITH_TIMEOUT(second.Control.GrabFrame(), 20'000);
        QCOMPARE(second.Control.Fault(), QString());
    }

    void PulledCameraWorksAgain() {
        Bench bench(0);
        bench.Control.SetCaptureFormat("320x180");
        const QSignalSpy faults(&bench.Control, &ezVidCap::FaultChanged);
        for (int round = 0; round < 2; ++round) {
            QVERIFY(bench.Control.GrabFrame());
            QVERIFY(bench.Control.Running());
            QVERIFY(Plug(false));
            QVERIFY(!bench.Control.GrabFrame());
            QVERIFY(!bench.Control.GrabFrame());
            QVERIFY(!bench.Control.Running());
            QCOMPARE(bench.Control.Fault(), QStringLiteral("Camera 'vivid' is not connected"));
            QVERIFY(Plug(true));
            QTRY_VERIFY_WITH_TIMEOUT(bench.Control.GrabFrame(), 20'000);
            QCOMPARE(bench.Control.Fault(), QString());
        }
        // One sentence when it went, one when it came back, both times.
        QCOMPARE(faults.count(), 4);
    }
};

QTEST_MAIN(CameraTest)
#include "test_camera.moc"
