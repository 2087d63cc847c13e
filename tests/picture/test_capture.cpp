// The capture control over what needs no network: test pictures, video files, and cameras that are
// plugged in and pulled out.

#include "picture/ezvidcap.h"
#include "picture/test_capture_aids.h"
#include "platform/video_device.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>

namespace {

// What holds the control up.
struct Bench {
    JumpingClock Time;
    Waiting Wait{Time};
    PluggedDevices Devices;
    ezVidCap Control{Wait, Devices};

    // The one camera is this entry.
    void Select(const QString& entry) {
        Control.SetCameras({entry});
        Control.SetDriverIndex(0);
    }
    // The number in the next picture; -1 when none came, -2 when it is not whole.
    int Grab(double tolerance = 12) {
        if (!Control.GrabFrame()) return -1;
        const int number = ReadNumber(Control.Frame());
        return IsWhole(Control.Frame(), number, tolerance) ? number : -2;
    }
    QList<int> Grab(int count, double tolerance) {
        QList<int> numbers;
        for (int i = 0; i < count; ++i) numbers << Grab(tolerance);
        return numbers;
    }
};

// A camera of one colour, the one that its address names. Its rows have bytes behind them, and it
// has two buffers: who keeps them gets no more.
class ColouredCamera : public VideoDevice {
  public:
    static constexpr int Width = 63;
    static constexpr int Height = 48;
    static constexpr int Row = 200;

    explicit ColouredCamera(const QString& colour) : bytes(Row * Height, '\x80') {
        const qsizetype channel = colour == "blue" ? 0 : 2;
        for (qsizetype y = 0; y < Height; ++y) {
            for (qsizetype at = 0; at < qsizetype{Width} * 3; ++at)
                bytes[y * Row + at] = at % 3 == channel ? '\xF0' : '\x10';
        }
    }

    static CaptureDevice At(const QString& connection, const QString& colour) {
        return {"cam",
                connection,
                {},
                colour,
                [](const QString& address, const std::optional<CaptureFormat>&, int&) {
                    return std::shared_ptr<VideoDevice>(std::make_shared<ColouredCamera>(address));
                }};
    }

    [[nodiscard]] const CaptureFormat& Format() const override { return format; }
    [[nodiscard]] int RowBytes() const override { return Row; }
    [[nodiscard]] int Take(VideoBuffer& buffer) override {
        fresh = !fresh;
        if (!fresh || lent == 2) return -EAGAIN;
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

// The colour in the middle of the picture: which of blue, green and red is strongest.
int Strongest(const Dib& dib) {
    const uchar* const pixel = dib.Bits.data() + dib.Height / 2 * dib.Stride() + dib.Width / 2 * 3;
    return static_cast<int>(std::max_element(pixel, pixel + 3) - pixel);
}

bool Holds(const QString& path) {
    const QDir open(QStringLiteral("/proc/self/fd"));
    const QStringList entries = open.entryList(QDir::Files | QDir::System);
    return std::ranges::any_of(entries, [&](const QString& entry) {
        return QFile::symLinkTarget(open.filePath(entry)) == path;
    });
}

void Overwrite(const QString& path, double from, double to) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    const auto start = static_cast<qint64>(double(file.size()) * from);
    const auto end = static_cast<qint64>(double(file.size()) * to);
    QVERIFY(file.seek(start));
    file.write(QByteArray(static_cast<qsizetype>(end - start), '\x5a'));
}

}  // namespace

class CaptureTest : public QObject {
    Q_OBJECT

  private slots:
    void EveryGrabIsTheNextPicture_data();
    void EveryGrabIsTheNextPicture();
    void FileGoesOnAfterItWasClosed();
    void DamagedFilesShowNoHalfPicture_data();
    void DamagedFilesShowNoHalfPicture();
    void FaultIsNamedOnce_data();
    void FaultIsNamedOnce();
    void StillFileIsReadAnew();
    void FrameIsSaved_data();
    void FrameIsSaved();
    void PreviewShowsPictures();
    void CameraIsFoundByItsPlug();
    void PulledCameraComesBack();
    void NothingSelectedGrabsNothing();

  private:
    QString Path(const char* name) { return folder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir folder;
};

void CaptureTest::EveryGrabIsTheNextPicture_data() {
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QString>("name");  // of the file; without a codec the address
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("length");  // pictures, after which it starts again
    QTest::newRow("test picture") << QByteArray() << "test:320x180" << QSize(320, 180) << 1000;
    QTest::newRow("odd test picture") << QByteArray() << "test:641x359" << QSize(641, 359) << 1000;
    QTest::newRow("jpeg") << QByteArray("mjpeg") << "a.avi" << QSize(320, 180) << 4;
    QTest::newRow("odd jpeg") << QByteArray("mjpeg") << "a: %d.avi" << QSize(641, 359) << 4;
    QTest::newRow("one picture") << QByteArray("mjpeg") << "one.avi" << QSize(320, 180) << 1;
    QTest::newRow("mpeg4") << QByteArray("mpeg4") << "b.avi" << QSize(320, 180) << 7;
    QTest::newRow("odd mpeg4") << QByteArray("mpeg4") << "b.mp4" << QSize(641, 359) << 7;
    QTest::newRow("h264") << QByteArray("libx264") << "c.mp4" << QSize(320, 180) << 7;
    QTest::newRow("uncompressed") << QByteArray("rawvideo") << "d.avi" << QSize(320, 180) << 3;
}

void CaptureTest::EveryGrabIsTheNextPicture() {
    QFETCH(QByteArray, codec);
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(int, length);
    const QString address = codec.isEmpty() ? name : folder.filePath(name);
    if (!codec.isEmpty() && !WriteVideo(address, codec.constData(), size, length))
        QSKIP("no such encoder here");
    Bench bench;
    bench.Select("cam|" + address);
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(bench.Grab(), i % length);
        QCOMPARE(QSize(bench.Control.Width(), bench.Control.Height()), size);
    }
    QVERIFY(bench.Control.Running());
    QCOMPARE(bench.Control.Fault(), QString());
}

void CaptureTest::FileGoesOnAfterItWasClosed() {
    const QString path = Path("closing.avi");
    QVERIFY(WriteVideo(path, "mpeg4", QSize(320, 180), 20));
    Bench bench;
    bench.Select("cam|" + path);
    for (int i = 0; i < 6; i += 2) {
        QCOMPARE(bench.Grab(2, 12), QList<int>({i, i + 1}));
        bench.Time.Jump(9'900);
        QCoreApplication::processEvents();
        QVERIFY(Holds(path));
        bench.Time.Jump(200);
        QTRY_VERIFY(!Holds(path));
    }
    QCOMPARE(bench.Grab(), 6);
    bench.Control.SetEnabled(false);
    QTRY_VERIFY(!Holds(path));
}

void CaptureTest::DamagedFilesShowNoHalfPicture_data() {
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<double>("from");  // the damage, parts of the file; to the end: cut off
    QTest::addColumn<double>("to");
    QTest::newRow("jpeg cut") << QByteArray("mjpeg") << 0.63 << 1.0;
    QTest::newRow("jpeg overwritten") << QByteArray("mjpeg") << 0.42 << 0.47;
    QTest::newRow("mpeg4 cut") << QByteArray("mpeg4") << 0.63 << 1.0;
    QTest::newRow("mpeg4 overwritten") << QByteArray("mpeg4") << 0.42 << 0.47;
    QTest::newRow("h264 overwritten") << QByteArray("libx264") << 0.42 << 0.47;
    QTest::newRow("uncompressed cut") << QByteArray("rawvideo") << 0.63 << 1.0;
}

void CaptureTest::DamagedFilesShowNoHalfPicture() {
    QFETCH(QByteArray, codec);
    QFETCH(double, from);
    QFETCH(double, to);
    const QString path = folder.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".avi");
    if (!WriteVideo(path, codec.constData(), QSize(320, 176), 20)) QSKIP("no such encoder here");
    if (to < 1)
        Overwrite(path, from, to);
    else
        QVERIFY(QFile::resize(path, static_cast<qint64>(double(QFileInfo(path).size()) * from)));
    Bench bench;
    bench.Select("cam|" + path);
    const QList<int> numbers = bench.Grab(20, 14);
    QVERIFY2(!numbers.contains(-1) && !numbers.contains(-2), qPrintable(QDebug::toString(numbers)));
    // In their order, and some are missing, so that it has started again within the twenty.
    const auto second = numbers.indexOf(0, 1);
    QCOMPARE(numbers.first(), 0);
    QVERIFY(second > 5 && std::is_sorted(numbers.begin(), numbers.begin() + second));
}

void CaptureTest::FaultIsNamedOnce_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("end");
    QFile garbage(Path("garbage.avi"));
    QVERIFY(garbage.open(QIODevice::WriteOnly));
    garbage.write(QByteArray(100'000, 'x'));
    QTest::newRow("no file") << Path("none.avi") << "names a file that does not exist";
    QTest::newRow("no video") << garbage.fileName() << "sends nothing that is a picture";
    QTest::newRow("folder") << folder.path() << "has stopped delivering";
    QTest::newRow("test size") << "test:axb"
                               << "has an address that cannot be opened";
    QTest::newRow("protocol") << "nosuch://127.0.0.1/"
                              << "has an address that cannot be opened";
}

void CaptureTest::FaultIsNamedOnce() {
    QFETCH(QString, address);
    QFETCH(QString, end);
    Bench bench;
    bench.Control.SetCameras({"yard|" + address, "good|test:64x48"});
    bench.Control.SetDriverIndex(0);
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
void CaptureTest::StillFileIsReadAnew() {
    Bench bench;
    bench.Select("cam|" + Path("still.jpg"));
    const auto put = [&](const QByteArray& bytes) {
        QFile file(Path("still.jpg"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    const QByteArray jpeg = JpegPicture(QSize(320, 180), 5);
    put(jpeg);
    QCOMPARE(bench.Grab(), 5);
    put(jpeg.left(jpeg.size() * 2 / 3));
    QCOMPARE(bench.Grab(), -1);
    put(JpegPicture(QSize(321, 181), 6));
    QCOMPARE(bench.Grab(), 6);
    QCOMPARE(bench.Control.Width(), 321);
}

void CaptureTest::FrameIsSaved_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("padded rows") << QSize(321, 181);
    QTest::newRow("rows without padding") << QSize(320, 180);
}

void CaptureTest::FrameIsSaved() {
    QFETCH(QSize, size);
    const QString path = Path("frame.bmp");
    Bench bench;
    bench.Select(QStringLiteral("cam|test:%1x%2").arg(size.width()).arg(size.height()));
    QVERIFY(!bench.Control.SaveDIB(path));
    QVERIFY(bench.Control.GrabFrame());
    QVERIFY(!bench.Control.SaveDIB(Path("missing/frame.bmp")));
    QVERIFY(bench.Control.SaveDIB(path));
    const QImage saved(path);
    QCOMPARE(saved.size(), size);
    const Dib& frame = bench.Control.Frame();
    for (const QPoint& point : {QPoint(0, 0), QPoint(size.width() - 1, size.height() - 1),
                                QPoint(size.width() / 2, size.height() / 2)}) {
        const uchar* const pixel =
            frame.Bits.data() + (size.height() - 1 - point.y()) * frame.Stride() + point.x() * 3;
        QCOMPARE(saved.pixelColor(point), QColor(pixel[2], pixel[1], pixel[0]));
    }
    QCOMPARE(QDir(folder.path()).entryList({"frame.bmp*"}), QStringList({"frame.bmp"}));
}

void CaptureTest::PreviewShowsPictures() {
    Bench bench;
    bench.Select("cam|test:320x180");
    bench.Control.SetPreviewRate(60);
    bench.Control.SetPreviewSize(QSize(91, 51));
    const QSignalSpy shown(&bench.Control, &ezVidCap::PreviewFrame);
    QCOMPARE(bench.Grab(), 0);
    QCOMPARE(shown.count(), 0);
    bench.Control.SetPreview(true);
    QTRY_VERIFY(shown.count() >= 3);
    QVERIFY(bench.Grab() >= 3);
    const auto picture = shown.last().first().value<QImage>();
    QCOMPARE(picture.size(), QSize(91, 51));
    QCOMPARE(picture.pixelColor(45, 10).alpha(), 255);
    bench.Control.SetPreview(false);
    // What was on its way when it was switched off has come before this.
    const int number = bench.Grab();
    const auto count = shown.count();
    QCOMPARE(bench.Grab(), number + 1);
    QCOMPARE(shown.count(), count);
}

void CaptureTest::CameraIsFoundByItsPlug() {
    Bench bench;
    bench.Devices.Plugged = {ColouredCamera::At("port 1", "blue"),
                             ColouredCamera::At("port 2", "red")};
    QCOMPARE(bench.Control.DriverNames(), QStringList({"cam", "cam (2)"}));
    QCOMPARE(bench.Control.NumCapDevs(), 2);
    bench.Control.SetDriverIndex(1);
    std::ranges::reverse(bench.Devices.Plugged);
    // More pictures than there are buffers.
    for (int i = 0; i < 5; ++i) QVERIFY(bench.Control.GrabFrame());
    QCOMPARE(Strongest(bench.Control.Frame()), 2);
    QCOMPARE(QSize(bench.Control.Width(), bench.Control.Height()),
             QSize(ColouredCamera::Width, ColouredCamera::Height));
    // Listed again, it is the first one, and still the selected one.
    QCOMPARE(bench.Control.DriverNames().size(), 2);
    QCOMPARE(bench.Control.DriverIndex(), 0);
}

void CaptureTest::PulledCameraComesBack() {
    Bench bench;
    const CaptureDevice blue = ColouredCamera::At("port 1", "blue");
    const CaptureDevice red = ColouredCamera::At("port 2", "red");
    bench.Devices.Plugged = {blue, red};
    bench.Control.SetDriverIndex(0);
    const QSignalSpy faults(&bench.Control, &ezVidCap::FaultChanged);
    bench.Devices.Plugged = {red};
    QVERIFY(!bench.Control.GrabFrame());
    QVERIFY(!bench.Control.GrabFrame());
    QVERIFY(!bench.Control.Running());
    QCOMPARE(faults.count(), 1);
    QCOMPARE(bench.Control.Fault(), QStringLiteral("Camera 'cam' is not connected"));
    bench.Devices.Plugged = {red, blue};
    QVERIFY(bench.Control.GrabFrame());
    QCOMPARE(Strongest(bench.Control.Frame()), 0);
    QVERIFY(bench.Control.Running());
    QCOMPARE(bench.Control.Fault(), QString());
}

void CaptureTest::NothingSelectedGrabsNothing() {
    Bench bench;
    bench.Control.SetCameras({"cam|test:64x48"});
    QVERIFY(!bench.Control.GrabFrame());
    QCOMPARE(bench.Control.DriverIndex(), -1);
    bench.Control.SetDriverIndex(0);
    bench.Control.SetEnabled(false);
    QVERIFY(!bench.Control.GrabFrame());
    QVERIFY(!bench.Control.Running());
    bench.Control.SetEnabled(true);
    QVERIFY(bench.Control.GrabFrame());
    bench.Control.SetDriverIndex(7);
    QVERIFY(!bench.Control.GrabFrame());
}

QTEST_MAIN(CaptureTest)
#include "test_capture.moc"
