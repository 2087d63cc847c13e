// The capture control over what needs no network: test pictures, video files, and cameras that are
// plugged in and pulled out.

#include "camera/test_capture_aids.h"
#include "platform/video_device.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cerrno>

namespace {

// A camera of one colour, the one that its address names. Its rows have bytes behind them, the
// lower half is another field of another colour, and it has two buffers: who keeps them gets no
// more.
class ColouredCamera : public VideoDevice {
  public:
    static constexpr int Width = 63;
    static constexpr int Height = 48;
    static constexpr int Row = 200;

    explicit ColouredCamera(const QString& colour) : bytes(Row * Height, '\x80') {
        if (colour == "jpeg") {
            bytes = JpegPicture(QSize(320, 180), 7, 6);
            format = {180, 320, 30, "mjpeg", true};
            return;
        }
        const qsizetype channel = colour == "blue" ? 0 : 2;
        for (qsizetype y = 0; y < Height; ++y) {
            for (qsizetype at = 0; at < qsizetype{Width} * 3; ++at)
                bytes[y * Row + at] = at % 3 == (y < Height / 2 ? channel : 1) ? '\xF0' : '\x10';
        }
    }

    static inline QStringList Adjusted;  // what cameras were told, in order
    static inline std::atomic<int> Taken = 0;
    static inline std::atomic<bool> Stalled = false;
    static inline std::atomic<int> InVain = 0;  // how often it was asked while stalled

    static CaptureDevice At(const QString& connection, const QString& colour) {
        return {"cam",
                connection,
                {},
                colour,
                [](const QString& address, const std::optional<CaptureFormat>&, int&) {
                    return std::shared_ptr<VideoDevice>(std::make_shared<ColouredCamera>(address));
                },
                [](const QString& address, const QList<CameraControlValue>& values) {
                    for (const auto& [id, value] : values)
                        Adjusted << address + u' ' + id + QString::number(value);
                }};
    }

    [[nodiscard]] const CaptureFormat& Format() const override { return format; }
    [[nodiscard]] PictureTraits Traits() const override {
        return {.Rows = PictureTraits::Fields::Stacked};
    }
    [[nodiscard]] int RowBytes() const override { return Row; }
    [[nodiscard]] int Take(VideoBuffer& buffer) override {
        fresh = !fresh;
        if (Stalled) ++InVain;
        if (!fresh || lent == 2 || Stalled) return -EAGAIN;
        ++Taken;
        buffer = {lent++, reinterpret_cast<const uchar*>(bytes.constData()), bytes.size()};
        return 0;
    }
    void GiveBack(int /*index*/) override { --lent; }

  private:
    CaptureFormat format{Width, Height, 30, "bgr24", false};
    QByteArray bytes;
    int lent = 0;
    bool fresh = false;
};

// The colour in the lower half of the picture: which of blue, green and red is strongest.
int Strongest(const QImage& picture) {
    const uchar* const pixel =
        picture.constScanLine(picture.height() * 3 / 4) + picture.width() / 2 * 3;
    return static_cast<int>(std::max_element(pixel, pixel + 3) - pixel);
}

// Whether this process has the file open.
bool Holds(const QString& path) {
    if (QSysInfo::kernelType() == "winnt") {
        // Nobody can move it then.
        const QString moved = path + ".moved";
        return !QFile::rename(path, moved) || !QFile::rename(moved, path);
    }
    const QDir open(QStringLiteral("/proc/self/fd"));
    const QStringList entries = open.entryList(QDir::Files | QDir::System);
    return std::ranges::any_of(entries, [&](const QString& entry) {
        return QFile::symLinkTarget(open.filePath(entry)) == path;
    });
}

}  // namespace

class CaptureTest : public QObject {
    Q_OBJECT

  private slots:
    void EveryGrabIsTheNextPicture_data() {
        // Pictures, after which it starts again.
        const Rows<QByteArray, QString, QSize, int, Storage> row;
        row("test picture", {}, "test:320x180", QSize(320, 180), 1000, {});
        row("jpeg", "mjpeg", "a; %d.avi", QSize(641, 359), 4, {});
        row("mpeg4", "mpeg4", "b.mp4", QSize(641, 359), 7, {});
        row("h264", "libx264", "c.mp4", QSize(320, 180), 7, {});
        row("uncompressed", "rawvideo", "d.avi", QSize(320, 180), 3, {});
        row("colours of high definition", "libx264", "e.mp4", QSize(1280, 720), 2, {});
        row("narrow pixels", "mpeg4", "f.mp4", QSize(320, 180), 3, {1, QSize(400, 180)});
        row("on its side", "mpeg4", "g.mp4", QSize(180, 320), 3, {6, {}});
    }
    void EveryGrabIsTheNextPicture() {
        const auto [codec, name, size, length, storage] =
            Row<QByteArray, QString, QSize, int, Storage>();
        const QString address = codec.isEmpty() ? name : folder.filePath(name);
        if (!codec.isEmpty() &&
            !WriteVideo(address, codec.constData(), size, length, 5, 25, storage))
            QSKIP("no such encoder here");
        CaptureBench bench;
        bench.Select("cam|" + address);
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(bench.Grab(size.height() < 720 ? 12 : 4), i % length);
            QCOMPARE(QSize(bench.Control.Width(), bench.Control.Height()), size);
        }
        QVERIFY(bench.Control.Running());
        QCOMPARE(bench.Control.Fault(), QString());
    }

    void FileGoesOnAfterItWasClosed() {
        const QString path = Path("closing.avi");
        QVERIFY(WriteVideo(path, "mpeg4", QSize(320, 180), 20));
        CaptureBench bench;
        bench.Select("cam|" + path);
        for (int i = 0; i < 6; i += 2) {
            QCOMPARE(bench.Grab(), i);
            QCOMPARE(bench.Grab(), i + 1);
            bench.Time.Jump(9'000);
            QCoreApplication::processEvents();
            QVERIFY(Holds(path));
            bench.Time.Jump(1'200);
            QTRY_VERIFY(!Holds(path));
            QVERIFY(bench.Control.Frame().isNull());  // some megabytes
        }
        QCOMPARE(bench.Grab(), 6);
        bench.Control.SetEnabled(false);
        QTRY_VERIFY(!Holds(path));
    }

    void DamagedFilesShowNoHalfPicture_data() {
        const Rows<QByteArray, double, double> row;  // parts of the file; to its end: cut off
        row("jpeg cut", "mjpeg", 0.63, 1.0);
        row("mpeg4 cut", "mpeg4", 0.63, 1.0);
        row("h264 overwritten", "libx264", 0.42, 0.47);
        row("uncompressed cut", "rawvideo", 0.63, 1.0);
    }
    void DamagedFilesShowNoHalfPicture() {
        const auto [codec, from, to] = Row<QByteArray, double, double>();
        const QString path = folder.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".avi");
        if (!WriteVideo(path, codec.constData(), QSize(320, 176), 20))
            QSKIP("no such encoder here");
        QByteArray bytes = ReadBytes(path);
        const auto begin = static_cast<qsizetype>(double(bytes.size()) * from);
        const auto end = static_cast<qsizetype>(double(bytes.size()) * to);
        bytes.replace(begin, end - begin, QByteArray(to < 1 ? end - begin : 0, '\x5a'));
        QVERIFY(WriteBytes(path, bytes));
        CaptureBench bench;
        bench.Select("cam|" + path);
        QList<int> numbers;
        for (int i = 0; i < 20; ++i) numbers << bench.Grab(14);
        QVERIFY2(!numbers.contains(-1) && !numbers.contains(-2),
                 qPrintable(QDebug::toString(numbers)));
        // In their order, and some are missing, so that it has started again within the twenty.
        const auto second = numbers.indexOf(0, 1);
        QCOMPARE(numbers.first(), 0);
        QVERIFY(second > 5 && std::is_sorted(numbers.begin(), numbers.begin() + second));
    }

    void FaultIsNamedOnce_data() {
        const Rows<QString, QString> row;
        QVERIFY(WriteBytes(Path("garbage.avi"), QByteArray(100'000, 'x')));
        row("no file", Path("none.avi"), "names a file that does not exist");
        row("no video", Path("garbage.avi"), "sends nothing that is a picture");
        row("test size", "test:axb", "has an address that cannot be opened");
    }
    void FaultIsNamedOnce() {
        const auto [address, end] = Row<QString, QString>();
        CaptureBench bench;
        bench.Select("yard|" + address);
        QVERIFY(bench.Control.Running());
        const QSignalSpy faults(&bench.Control, &ezVidCap::FaultChanged);
        QVERIFY(!bench.Control.GrabFrame());
        QVERIFY(!bench.Control.GrabFrame());
        QVERIFY(!bench.Control.Running());
        QCOMPARE(bench.Control.Fault(), "Camera 'yard' " + end);
        QCOMPARE(faults.count(), 1);
        bench.Control.SetDriverIndex(1);
        QVERIFY(bench.Control.GrabFrame());
        QVERIFY(bench.Control.Running());
        QCOMPARE(faults.count(), 2);
        QCOMPARE(faults.last().first().toString(), QString());
    }

    // Another program puts new pictures into the same file.
    void StillFileIsReadAnew() {
        CaptureBench bench;
        bench.Select("cam|" + Path("still.jpg"));
        const QByteArray jpeg = JpegPicture(QSize(320, 180), 5);
        QVERIFY(WriteBytes(Path("still.jpg"), jpeg));
        QCOMPARE(bench.Grab(), 5);
        QVERIFY(WriteBytes(Path("still.jpg"), jpeg.left(jpeg.size() * 2 / 3)));
        QCOMPARE(bench.Grab(), -1);
        QVERIFY(WriteBytes(Path("still.jpg"), JpegPicture(QSize(321, 181), 6)));
        QCOMPARE(bench.Grab(), 6);
        QCOMPARE(bench.Control.Width(), 321);
    }

    void FrameIsSaved() {
        constexpr QSize size(321, 181);
        const QString path = Path("frame.bmp");
        CaptureBench bench;
        bench.Select("cam|test:321x181");
        QVERIFY(bench.Control.GrabFrame());
        QVERIFY(!bench.Control.SaveDIB(Path("missing/frame.bmp")));
        QVERIFY(bench.Control.SaveDIB(path));
        const QImage saved(path);
        QCOMPARE(saved.size(), size);
        QCOMPARE(saved.convertToFormat(QImage::Format_BGR888), bench.Control.Frame());
        QCOMPARE(QDir(folder.path()).entryList({"frame.bmp*"}), QStringList({"frame.bmp"}));
    }

    void PreviewShowsPictures() {
        CaptureBench bench;
        bench.Select("cam|test:320x180");
        bench.Control.SetPreviewRate(60);
        bench.Control.SetPreviewSize(QSize(91, 51));
        const QSignalSpy shown(&bench.Control, &ezVidCap::PreviewFrame);
        QCOMPARE(bench.Grab(), 0);
        QCOMPARE(shown.count(), 0);
        QElapsedTimer time;
        time.start();
        bench.Control.SetPreview(true);
        QTRY_VERIFY(shown.count() >= 3);
        const int last = bench.Grab();
        QVERIFY(last >= 3 && last <= time.elapsed() / 40 + 3);  // at its own pace, and the grab's
        QCOMPARE(shown.last().first().value<QImage>().size(), QSize(91, 51));
        // Closed when nothing has come for a while, and opened again.
        bench.Time.Jump(5000);
        QCOMPARE(bench.Control.Fault(), QString());
        bench.Time.Jump(16'000);
        QCOMPARE(bench.Control.Fault(), QStringLiteral("Camera 'cam' delivers no picture"));
        bench.Time.Jump(5000);
        QTRY_COMPARE(bench.Control.Fault(), QString());
        bench.Control.SetPreview(false);
        // What was on its way when it was switched off has come before this.
        const int number = bench.Grab();
        const auto count = shown.count();
        QCOMPARE(bench.Grab(), number + 1);
        QCOMPARE(shown.count(), count);
    }

    void PulledCameraComesBack() {
        CaptureBench bench;
        ColouredCamera::Adjusted.clear();
        bench.Control.SetAdjustments({"cam|Gain|7", "cam (2)|Gain|8", "cam|Hue|-1"});
        const CaptureDevice blue = ColouredCamera::At("port 1", "blue");
        const CaptureDevice red = ColouredCamera::At("port 2", "red");
        bench.Devices.Plugged = {blue, red};
        QCOMPARE(bench.Control.DriverNames(), QStringList({"cam", "cam (2)"}));
        bench.Control.SetDriverIndex(0);
        QVERIFY(bench.Control.GrabFrame());
        bench.Control.SetCaptureFormat("320x240");  // which takes effect with another opening
        const QSignalSpy faults(&bench.Control, &ezVidCap::FaultChanged);
        bench.Devices.Plugged = {red};
        QVERIFY(!bench.Control.GrabFrame());
        QVERIFY(!bench.Control.GrabFrame());
        QVERIFY(!bench.Control.Running());
        QCOMPARE(faults.count(), 1);
        QCOMPARE(bench.Control.Fault(), QStringLiteral("Camera 'cam' is not connected"));
        bench.Devices.Plugged = {red, blue};
        // More pictures than there are buffers.
        for (int i = 0; i < 5; ++i) QVERIFY(bench.Control.GrabFrame());
        QCOMPARE(QSize(bench.Control.Width(), bench.Control.Height()),
                 QSize(ColouredCamera::Width, ColouredCamera::Height));
        QCOMPARE(Strongest(bench.Control.Frame()), 0);
        QVERIFY(bench.Control.Running());
        QCOMPARE(bench.Control.Fault(), QString());
        // Listed again, it is the second one, and still the selected one.
        QCOMPARE(bench.Control.DriverNames(), QStringList({"cam", "cam (2)"}));
        QCOMPARE(bench.Control.DriverIndex(), 1);
        // It is told its adjustments each time, because it forgets them.
        QCOMPARE(ColouredCamera::Adjusted,
                 QStringList({"blue Gain7", "blue Hue-1", "blue Gain7", "blue Hue-1"}));
    }

    void JpegCameraStandsUpright() {
        CaptureBench bench;
        bench.Devices.Plugged = {ColouredCamera::At("port 1", "jpeg")};
        (void)bench.Control.DriverNames();
        bench.Control.SetDriverIndex(0);
        QCOMPARE(bench.Grab(), 7);
    }

    void OldPictureIsNotDelivered() {
        CaptureBench bench;
        ColouredCamera::Adjusted.clear();
        bench.Control.SetAdjustments({"cam|Gain|7"});
        bench.Devices.Plugged = {ColouredCamera::At("port 1", "blue")};
        (void)bench.Control.DriverNames();
        bench.Control.SetDriverIndex(0);
        QVERIFY(bench.Control.GrabFrame());
        int taken = ColouredCamera::Taken;
        QTRY_VERIFY(ColouredCamera::Taken > taken + 1);
        // It has stopped: there is a picture that nobody has had yet, and it is four seconds old.
        ColouredCamera::Stalled = true;
        QTRY_VERIFY(ColouredCamera::InVain >= 2);
        bench.Time.Jump(4000);
        taken = ColouredCamera::Taken;
        QTimer::singleShot(50, &bench.Control, [] { ColouredCamera::Stalled = false; });
        QVERIFY(bench.Control.GrabFrame());
        QVERIFY(ColouredCamera::Taken > taken);
        QCOMPARE(ColouredCamera::Adjusted.size(), 1);
        // What lies in the camera's buffers is from before: it is opened anew.
        bench.Time.Suspend(60'000);
        QVERIFY(bench.Control.GrabFrame());
        QCOMPARE(ColouredCamera::Adjusted.size(), 2);
    }

  private:
    QString Path(const QString& name) { return folder.filePath(name); }

    QTemporaryDir folder;
};

QTEST_MAIN(CaptureTest)
#include "test_capture.moc"
