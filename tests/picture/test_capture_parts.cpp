// The pieces of the capture control that need no camera: choosing a format, naming cameras, telling
// whole pictures from cut ones, waiting for the exposure, converting.

#include "picture/camera_list.h"
#include "picture/capture_exposure.h"
#include "picture/capture_format.h"
#include "picture/capture_scaler.h"
#include "picture/capture_whole.h"
#include "picture/device_packets.h"
#include "picture/test_capture_aids.h"
#include "picture/test_picture.h"

#include <QTest>

#include <cmath>

namespace {

CaptureFormat Raw(int width, int height, double rate) {
    return {width, height, rate, QStringLiteral("yuyv422"), false};
}

CaptureFormat Jpeg(int width, int height, double rate) {
    return {width, height, rate, QStringLiteral("mjpeg"), true};
}

QString Text(const CaptureFormat& format) {
    return QStringLiteral("%1x%2@%3 %4")
        .arg(format.Width)
        .arg(format.Height)
        .arg(format.Rate)
        .arg(format.PixelFormat);
}

CaptureDevice Device(const QString& name, const QString& connection, const QString& address) {
    return {name, connection, QStringLiteral("v4l2"), address};
}

}  // namespace

class CapturePartsTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }
    void FormatIsChosen_data();
    void FormatIsChosen();
    void CamerasAreNamed();
    void CameraIsRecognised_data();
    void CameraIsRecognised();
    void AddressKinds_data();
    void AddressKinds();
    void TestAddress_data();
    void TestAddress();
    void CutJpegIsToldApart_data();
    void CutJpegIsToldApart();
    void ExposureSettles_data();
    void ExposureSettles();
    void RangesAreConverted_data();
    void RangesAreConverted();
    void PaddingIsLeftOut_data();
    void PaddingIsLeftOut();
    void FaultsAreNamed_data();
    void FaultsAreNamed();
};

void CapturePartsTest::FormatIsChosen_data() {
    QTest::addColumn<QList<CaptureFormat>>("offered");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("chosen");
    const QList<CaptureFormat> webcam{
        Raw(640, 480, 30),   Raw(1280, 720, 10),   Raw(1920, 1080, 3),  Jpeg(640, 480, 30),
        Jpeg(1280, 720, 60), Jpeg(1920, 1080, 30), Jpeg(3840, 2160, 30)};
    const auto row = [](const char* name, const QList<CaptureFormat>& offered, const char* asked,
                        const char* chosen) {
        QTest::newRow(name) << offered << QString::fromLatin1(asked) << QString::fromLatin1(chosen);
    };
    row("compressed where raw is too slow", webcam, "", "1920x1080@30 mjpeg");
    row("raw where it is fast enough", webcam, "1280x720", "1280x720@10 yuyv422");
    row("rate asked for rules raw out", webcam, "1280x720@25", "1280x720@25 mjpeg");
    row("nearest size", webcam, "650X470", "640x480@30 yuyv422");
    row("unreadable wish", webcam, "large", "1920x1080@30 mjpeg");
    row("too fast a camera", {Raw(800, 600, 120)}, "", "800x600@30 yuyv422");
    row("smaller and fast before larger and slow", {Raw(1920, 1080, 2), Raw(800, 600, 30)}, "",
        "800x600@30 yuyv422");
    row("nothing but slow", {Raw(320, 240, 1), Raw(640, 480, 2)}, "", "640x480@2 yuyv422");
    row("nothing small enough", {Raw(3840, 2160, 15), Raw(2592, 1944, 15)}, "",
        "2592x1944@15 yuyv422");
    row("rate not known", {Raw(640, 480, 0), Jpeg(640, 480, 30)}, "", "640x480@0 yuyv422");
    row("five told as 4.99", {Raw(640, 480, 4.99), Jpeg(640, 480, 30)}, "", "640x480@4.99 yuyv422");
    row("nothing offered", {}, "640x480@5", "640x480@5 ");
}

void CapturePartsTest::FormatIsChosen() {
    QFETCH(QList<CaptureFormat>, offered);
    QFETCH(QString, asked);
    const auto chosen = ChooseCaptureFormat(offered, asked);
    QVERIFY(chosen);
    QTEST(Text(*chosen), "chosen");
}

void CapturePartsTest::CamerasAreNamed() {
    const QList<Camera> cameras =
        ListCameras({Device("vivid", "a", "/dev/video0"), Device("vivid", "b", "/dev/video1"),
                     Device("vivid (2)", "c", "/dev/video2")},
                    {"vivid| test:64x48", "yard|rtsp://10.0.0.1/a|b", "empty|", "/video.avi"});
    QStringList names;
    QStringList addresses;
    for (const Camera& camera : cameras) {
        names << camera.Name;
        addresses << camera.Address;
    }
    QCOMPARE(names,
             QStringList({"vivid", "vivid (2)", "vivid (2) (2)", "vivid (3)", "yard", "Camera"}));
    QCOMPARE(addresses.mid(3), QStringList({"test:64x48", "rtsp://10.0.0.1/a|b", "/video.avi"}));
}

void CapturePartsTest::CameraIsRecognised_data() {
    QTest::addColumn<QList<CaptureDevice>>("before");
    QTest::addColumn<int>("index");
    QTest::addColumn<QList<CaptureDevice>>("after");
    QTest::addColumn<int>("found");
    const CaptureDevice a = Device("cam", "usb-1", "/dev/video0");
    const CaptureDevice b = Device("cam", "usb-2", "/dev/video1");
    const CaptureDevice aMoved = Device("cam", "usb-1", "/dev/video1");
    const CaptureDevice bMoved = Device("cam", "usb-2", "/dev/video0");
    const CaptureDevice other = Device("else", "usb-1", "/dev/video0");
    using Devices = QList<CaptureDevice>;
    QTest::newRow("numbers exchanged") << Devices{a, b} << 1 << Devices{aMoved, bMoved} << 1;
    QTest::newRow("one before it gone") << Devices{a, b} << 1 << Devices{bMoved} << 0;
    QTest::newRow("its twin is not it") << Devices{a, b} << 0 << Devices{bMoved} << -1;
    QTest::newRow("another one in its place") << Devices{a} << 0 << Devices{other} << -1;
    QTest::newRow("second picture of one camera") << Devices{a, a} << 1 << Devices{a, a} << 1;
}

void CapturePartsTest::CameraIsRecognised() {
    QFETCH(QList<CaptureDevice>, before);
    QFETCH(QList<CaptureDevice>, after);
    QFETCH(int, index);
    const Camera camera = ListCameras(before, {})[index];
    int found = -1;
    const QList<Camera> now = ListCameras(after, {});
    for (int i = 0; i < now.size(); ++i) {
        if (!now[i].SameAs(camera)) continue;
        QCOMPARE(found, -1);
        found = i;
    }
    QTEST(found, "found");
}

void CapturePartsTest::AddressKinds_data() {
    QTest::addColumn<CaptureKind>("kind");
    QTest::newRow("TEST:64x48") << CaptureKind::Test;
    QTest::newRow("rtsp://10.0.0.1/live") << CaptureKind::Network;
    QTest::newRow("http://10.0.0.1/video.mjpg") << CaptureKind::Network;
    QTest::newRow("file:///home/a.avi") << CaptureKind::File;
    QTest::newRow("C:\\videos\\a.avi") << CaptureKind::File;
    QTest::newRow("/home/a: b.avi") << CaptureKind::File;
}

void CapturePartsTest::AddressKinds() {
    QTEST(KindOfAddress(QString::fromLatin1(QTest::currentDataTag())), "kind");
}

void CapturePartsTest::TestAddress_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("test:641x359") << QSize(641, 359);
    QTest::newRow("TEST: 1X1 ") << QSize(1, 1);
    QTest::newRow("test:0x100") << QSize();
    QTest::newRow("test:99999x99999") << QSize();
    QTest::newRow("test:640") << QSize();
    QTest::newRow("test:-5x5") << QSize();
}

void CapturePartsTest::TestAddress() {
    const QSize size = TestPicture::ParseAddress(QString::fromLatin1(QTest::currentDataTag()));
    QTEST(size, "size");
    if (size.isEmpty()) return;
    // Even where the digits do not fit, drawing stays inside the picture.
    CapturePosition position = BeforeFirstPicture;
    TestPicture source(size, position);
    QCOMPARE(source.Advance(), CaptureSource::Step::Picture);
}

void CapturePartsTest::CutJpegIsToldApart_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("whole");
    const QByteArray jpeg = JpegPicture(QSize(64, 48), 1);
    QByteArray thumbnail = jpeg;
    const QByteArray inner = QByteArray::fromHex("FFE1000AFFD84142FFD94344");
    thumbnail.insert(2, inner);
    QTest::newRow("whole") << jpeg << true;
    QTest::newRow("padded") << jpeg + QByteArray(500, '\0') << true;
    QTest::newRow("small picture inside") << thumbnail << true;
    QTest::newRow("end missing") << jpeg.chopped(2) << false;
    QTest::newRow("half") << jpeg.left(jpeg.size() / 2) << false;
    QTest::newRow("only the small picture has its end")
        << thumbnail.left(thumbnail.size() - 30) << false;
    QTest::newRow("header only") << jpeg.left(30) << false;
    QTest::newRow("start missing") << jpeg.mid(1) << false;
    QTest::newRow("segment beyond the end") << QByteArray::fromHex("FFD8FFE0FFFF0000") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void CapturePartsTest::CutJpegIsToldApart() {
    QFETCH(QByteArray, bytes);
    QTEST(JpegWhole(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size()), "whole");
}

void CapturePartsTest::ExposureSettles_data() {
    QTest::addColumn<int>("interval");  // milliseconds between two pictures
    QTest::addColumn<std::function<double(int)>>("brightness");  // by milliseconds
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    using Curve = std::function<double(int)>;
    QTest::newRow("steady") << 33 << Curve([](int) { return 100.0; }) << 300 << 340;
    QTest::newRow("slow camera") << 250 << Curve([](int) { return 100.0; }) << 500 << 750;
    QTest::newRow("rising for a second")
        << 33 << Curve([](int t) { return std::min(t, 1000) / 10.0; }) << 950 << 1150;
    QTest::newRow("approaching its end")
        << 33 << Curve([](int t) { return 120 * (1 - std::exp(-t / 300.0)); }) << 600 << 1500;
    QTest::newRow("night") << 33 << Curve([](int t) { return t % 2 * 0.5; }) << 300 << 340;
    QTest::newRow("flicker without end")
        << 33 << Curve([](int t) { return t / 33 % 2 ? 50.0 : 150.0; }) << 3000 << 3040;
}

void CapturePartsTest::ExposureSettles() {
    QFETCH(int, interval);
    QFETCH(std::function<double(int)>, brightness);
    QFETCH(int, least);
    QFETCH(int, most);
    ExposureSettled exposure;
    int time = interval;
    while (!exposure.Feed(time, brightness(time)) && time < 10'000) time += interval;
    QVERIFY2(time >= least && time <= most, qPrintable(QString::number(time)));
    QVERIFY(exposure.Feed(time + interval, 0));
}

void CapturePartsTest::RangesAreConverted_data() {
    QTest::addColumn<AVPixelFormat>("format");
    QTest::addColumn<AVColorRange>("range");
    QTest::addColumn<int>("dark");  // the luma values of grey 64 and 191
    QTest::addColumn<int>("bright");
    QTest::newRow("limited by default")
        << AV_PIX_FMT_YUYV422 << AVCOL_RANGE_UNSPECIFIED << 71 << 180;
    QTest::newRow("limited") << AV_PIX_FMT_YUV420P << AVCOL_RANGE_MPEG << 71 << 180;
    QTest::newRow("full by its format")
        << AV_PIX_FMT_YUVJ420P << AVCOL_RANGE_UNSPECIFIED << 64 << 191;
    QTest::newRow("full as told") << AV_PIX_FMT_YUV420P << AVCOL_RANGE_JPEG << 64 << 191;
    QTest::newRow("grey") << AV_PIX_FMT_GRAY8 << AVCOL_RANGE_UNSPECIFIED << 64 << 191;
}

// The left half dark, the right half bright; both sizes of rows: those that go straight into the
// bitmap and those that do not.
void CapturePartsTest::RangesAreConverted() {
    QFETCH(AVPixelFormat, format);
    QFETCH(AVColorRange, range);
    QFETCH(int, dark);
    QFETCH(int, bright);
    FrameScaler scaler;
    for (const QSize size : {QSize(64, 48), QSize(67, 49)}) {
        const FramePtr frame(av_frame_alloc());
        frame->format = format;
        frame->width = size.width();
        frame->height = size.height();
        frame->color_range = range;
        QVERIFY(av_frame_get_buffer(frame.get(), 0) >= 0);
        const bool packed = format == AV_PIX_FMT_YUYV422;
        for (int y = 0; y < size.height(); ++y) {
            uint8_t* const row = frame->data[0] + y * frame->linesize[0];
            for (int x = 0; x < frame->linesize[0]; ++x) {
                const bool left = (packed ? x / 2 : x) < size.width() / 2;
                row[x] = packed && x % 2 ? 128 : static_cast<uint8_t>(left ? dark : bright);
            }
        }
        for (int plane = 1; plane < 3 && frame->data[plane]; ++plane)
            memset(frame->data[plane], 128,
                   size_t(frame->linesize[plane] * ((size.height() + 1) / 2)));
        Dib dib;
        QVERIFY(scaler.ToDib(*frame, dib));
        QVERIFY(dib.Valid());
        QCOMPARE(QSize(dib.Width, dib.Height), size);
        for (int y = 0; y < dib.Height; ++y) {
            const uchar* const row = dib.Bits.data() + y * dib.Stride();
            for (int channel = 0; channel < 3; ++channel) {
                QVERIFY(std::abs(row[channel] - 64) <= 2);
                QVERIFY(std::abs(row[(dib.Width - 1) * 3 + channel] - 191) <= 2);
            }
        }
        QVERIFY(std::abs(scaler.Brightness(*frame) - 127.5) < 12);
    }
}

void CapturePartsTest::PaddingIsLeftOut_data() {
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("rowBytes");
    QTest::addColumn<QByteArray>("source");  // of 2x2 pixels; what lies between rows is a blank
    QTest::addColumn<QByteArray>("tight");
    QTest::newRow("packed") << int(AV_PIX_FMT_BGR24) << 8 << QByteArray("abcdef  ghijkl  ")
                            << QByteArray("abcdefghijkl");
    QTest::newRow("last row ends early")
        << int(AV_PIX_FMT_BGR24) << 8 << QByteArray("abcdef  ghijkl") << QByteArray("abcdefghijkl");
    QTest::newRow("planes") << int(AV_PIX_FMT_YUV420P) << 4 << QByteArray("ab  cd  e f ")
                            << QByteArray("abcdef");
    QTest::newRow("two planes") << int(AV_PIX_FMT_NV12) << 4 << QByteArray("ab  cd  ef  ")
                                << QByteArray("abcdef");
    QTest::newRow("cut") << int(AV_PIX_FMT_BGR24) << 8 << QByteArray("abcdef  ghijk")
                         << QByteArray();
}

void CapturePartsTest::PaddingIsLeftOut() {
    QFETCH(const int, pixels);
    QFETCH(const int, rowBytes);
    QFETCH(const QByteArray, source);
    QFETCH(const QByteArray, tight);
    const VideoBuffer picture{0, reinterpret_cast<const uchar*>(source.constData()), source.size()};
    const std::vector<uchar> copied =
        WithoutPadding(picture, AVPixelFormat(pixels), QSize(2, 2), rowBytes);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(copied.data()), qsizetype(copied.size())),
             tight);
}

void CapturePartsTest::FaultsAreNamed_data() {
    QTest::addColumn<int>("error");
    QTest::addColumn<CaptureKind>("kind");
    QTest::addColumn<QString>("end");
    const auto row = [](const char* name, int error, CaptureKind kind, const char* end) {
        QTest::newRow(name) << error << kind << QString::fromLatin1(end);
    };
    row("device busy", AVERROR(EBUSY), CaptureKind::Device, "is in use by another program");
    row("device denied", AVERROR(EACCES), CaptureKind::Device, "may not be opened by this user");
    row("device gone", AVERROR(ENODEV), CaptureKind::Device, "is not connected");
    row("node gone", AVERROR(ENOENT), CaptureKind::Device, "is not connected");
    row("file gone", AVERROR(ENOENT), CaptureKind::File, "names a file that does not exist");
    row("refused", AVERROR(ECONNREFUSED), CaptureKind::Network, "cannot be reached");
    row("host unknown", AVERROR(EIO), CaptureKind::Network, "cannot be reached");
    row("device broken", AVERROR(EIO), CaptureKind::Device, "has stopped delivering");
}

void CapturePartsTest::FaultsAreNamed() {
    QFETCH(int, error);
    QFETCH(CaptureKind, kind);
    QFETCH(QString, end);
    QCOMPARE(FaultSentence(FaultOfError(error, kind), "yard"), "Camera 'yard' " + end);
}

QTEST_GUILESS_MAIN(CapturePartsTest)
#include "test_capture_parts.moc"
