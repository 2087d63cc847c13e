// The pieces of the capture control that need no camera: choosing a format, naming cameras, telling
// whole pictures from cut ones, waiting for the exposure, converting.

#include "camera/camera_adjustments.h"
#include "camera/camera_list.h"
#include "camera/capture_format.h"
#include "camera/device_packets.h"
#include "camera/exposure_settled.h"
#include "camera/frame_scaler.h"
#include "camera/test_capture_aids.h"
#include "camera/test_picture.h"
#include "camera/whole_picture.h"
#include "platform/frame_rates.h"
#include "support/data_rows.h"

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
    return QString::asprintf("%dx%d@%g ", format.Width, format.Height, format.Rate) +
           format.PixelFormat;
}

CaptureDevice Device(const QString& name, const QString& connection, const QString& address) {
    return {name, connection, QStringLiteral("v4l2"), address};
}

}  // namespace

class CapturePartsTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }
    void FormatIsChosen_data() {
        const Rows<QList<CaptureFormat>, QString, QString> row;
        const QList<CaptureFormat> webcam{
            Raw(640, 480, 30),   Raw(1280, 720, 10),   Raw(1920, 1080, 3),  Jpeg(640, 480, 30),
            Jpeg(1280, 720, 60), Jpeg(1920, 1080, 30), Jpeg(3840, 2160, 30)};
        row("compressed where raw is too slow", webcam, "", "1920x1080@30 mjpeg");
        row("raw where it is fast enough", webcam, "1280x720", "1280x720@10 yuyv422");
        row("rate asked for rules raw out", webcam, "1280x720@25", "1280x720@25 mjpeg");
        row("nearest size", webcam, "650X470", "640x480@30 yuyv422");
        row("too high", {Raw(1920, 1200, 30), Raw(1280, 720, 30)}, "", "1280x720@30 yuyv422");
        row("unreadable wish", webcam, "large", "1920x1080@30 mjpeg");
        row("too fast a camera", {Raw(800, 600, 120)}, "", "800x600@30 yuyv422");
        row("fast before large", {Raw(1920, 1080, 2), Raw(800, 600, 30)}, "", "800x600@30 yuyv422");
        row("nothing but slow", {Raw(320, 240, 1), Raw(640, 480, 2)}, "", "640x480@2 yuyv422");
        row("nothing small enough", {Raw(3840, 2160, 15), Raw(2592, 1944, 15)}, "",
            "2592x1944@15 yuyv422");
        row("rate not known", {Raw(640, 480, 0), Jpeg(640, 480, 30)}, "", "640x480@0 yuyv422");
        row("told as 4.99", {Raw(640, 480, 4.99), Jpeg(640, 480, 30)}, "", "640x480@4.99 yuyv422");
        row("nothing offered", {}, "640x480@5", "640x480@5 ");
        const CaptureFormat rated{640, 480, 60, "mjpeg", true, {60, 29.996, 10}};
        row("rate told more exactly", {rated}, "640x480@30", "640x480@29.996 mjpeg");
        row("slower than it can", {rated}, "640x480@5", "640x480@10 mjpeg");
    }
    void FormatIsChosen() {
        const auto [offered, asked, expected] = Row<QList<CaptureFormat>, QString, QString>();
        const auto chosen = ChooseCaptureFormat(offered, asked);
        QVERIFY(chosen);
        QCOMPARE(Text(*chosen), expected);
    }

    void RatesAreOfferedBetween_data() {
        const Rows<double, double, QList<double>> row;
        row("ends among the usual", 5, 30, {5, 7.5, 10, 15, 20, 24, 25, 30});
        row("ends beside them", 8, 12.5, {8, 10, 12.5});
        row("one rate", 30, 30, {30});
        row("rounded to less", 30.001, 30, {30});
        row("no lower end", 0.001, 2, {1, 2});
    }
    void RatesAreOfferedBetween() {
        const auto [lowest, highest, rates] = Row<double, double, QList<double>>();
        QCOMPARE(RatesBetween(lowest, highest), rates);
    }

    void CamerasAreNamed() {
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
        QCOMPARE(names, QStringList({"vivid", "vivid (2)", "vivid (2) (2)", "vivid (3)", "yard",
                                     "Camera"}));
        QCOMPARE(addresses.mid(3),
                 QStringList({"test:64x48", "rtsp://10.0.0.1/a|b", "/video.avi"}));
    }

    void AdjustmentsBelongToTheirCamera_data() {
        const Rows<QString, QString> row;
        row("its own", "cam", "Gain 7, Hue -3");
        row("a bar in the name", "a|b", "Gain 9");
        row("none", "b", "");
    }
    void AdjustmentsBelongToTheirCamera() {
        const auto [camera, adjusted] = Row<QString, QString>();
        const QStringList lines{"cam|Gain|7", "cam|Zoom|far", "Gain|7", "a|b|Gain|9", "cam|Hue|-3"};
        QStringList found;
        for (const auto& [id, value] : CameraAdjustments::Of(lines, camera))
            found << id + u' ' + QString::number(value);
        QCOMPARE(found.join(QStringLiteral(", ")), adjusted);
        const QStringList replaced = CameraAdjustments::Replaced(lines, camera, {{"Iris", 1}});
        QCOMPARE(replaced.last(), camera + QStringLiteral("|Iris|1"));
        QVERIFY(CameraAdjustments::Of(replaced, camera).size() == 1);
    }

    void CameraIsRecognised_data() {
        const Rows<QList<CaptureDevice>, int, QList<CaptureDevice>, int> row;
        const CaptureDevice a = Device("cam", "usb-1", "/dev/video0");
        const CaptureDevice b = Device("cam", "usb-2", "/dev/video1");
        const CaptureDevice aMoved = Device("cam", "usb-1", "/dev/video1");
        const CaptureDevice bMoved = Device("cam", "usb-2", "/dev/video0");
        const CaptureDevice other = Device("else", "usb-1", "/dev/video0");
        row("numbers exchanged", {a, b}, 1, {aMoved, bMoved}, 1);
        row("one before it gone", {a, b}, 1, {bMoved}, 0);
        row("its twin is not it", {a, b}, 0, {bMoved}, -1);
        row("another one in its place", {a}, 0, {other}, -1);
        row("second picture of one camera", {a, a}, 1, {a, a}, 1);
    }
    void CameraIsRecognised() {
        const auto [before, index, after, expected] =
            Row<QList<CaptureDevice>, int, QList<CaptureDevice>, int>();
        const Camera camera = ListCameras(before, {})[index];
        const QList<Camera> now = ListCameras(after, {});
        for (int i = 0; i < now.size(); ++i) QCOMPARE(now[i].SameAs(camera), i == expected);
    }

    void AddressKinds_data() {
        using enum CaptureKind;
        Rows<QString, CaptureKind, QSize>({{"test:641x359", Test, QSize(641, 359)},
                                           {"TEST: 1X1 ", Test, QSize(1, 1)},
                                           {"test:0x100", Test, {}},
                                           {"test:99999x99999", Test, {}},
                                           {"rtsp://10.0.0.1/live", Network, {}},
                                           {"file:///home/a.avi", File, {}},
                                           {"C:\\videos\\a.avi", File, {}},
                                           {"/home/a: b.avi", File, {}}});
    }
    void AddressKinds() {
        const auto [address, kind, size] = Row<QString, CaptureKind, QSize>();
        QCOMPARE(KindOfAddress(address), kind);
        QCOMPARE(TestPicture::ParseAddress(address), size);
        if (size.isEmpty()) return;
        // Even where the digits do not fit, drawing stays inside the picture.
        CapturePosition position = BeforeFirstPicture;
        QCOMPARE(TestPicture(size, position).Advance(), CaptureSource::Step::Picture);
    }

    void CutJpegIsToldApart_data() {
        const Rows<QByteArray, bool> row;
        const QByteArray jpeg = JpegPicture(QSize(64, 48), 1);
        QByteArray thumbnail = jpeg;
        const QByteArray inner = QByteArray::fromHex("FFE1000AFFD84142FFD94344");
        thumbnail.insert(2, inner);
        row("whole", jpeg, true);
        row("padded", jpeg + QByteArray(500, '\0'), true);
        row("fill byte", QByteArray(jpeg).insert(2, '\xFF'), true);
        row("small picture inside", thumbnail, true);
        row("end missing", jpeg.chopped(2), false);
        row("only the small picture has its end", thumbnail.left(thumbnail.size() - 30), false);
        row("header only", jpeg.left(30), false);
        row("start missing", jpeg.mid(1), false);
        row("segment beyond the end", QByteArray::fromHex("FFD8FFE0FFFF0000"), false);
    }
    void CutJpegIsToldApart() {
        const auto [bytes, whole] = Row<QByteArray, bool>();
        QCOMPARE(JpegWhole(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size()), whole);
    }

    void ExposureSettles_data() {
        const Rows<int, std::function<double(int)>, int, int> row;
        row("steady", 33, {[](int) { return 100.0; }}, 300, 340);
        row("rising for a second", 33, {[](int t) { return std::min(t, 1000) / 10.0; }}, 950, 1150);
        row("approaching its end", 33, {[](int t) { return 120 * (1 - std::exp(-t / 300.0)); }},
            600, 1500);
        row("night", 33, {[](int t) { return t % 2 * 0.5; }}, 300, 340);
        row("endless flicker", 33, {[](int t) { return t / 33 % 2 * 99.0; }}, 3000, 3040);
    }
    void ExposureSettles() {
        const auto [interval, brightness, least, most] =
            Row<int, std::function<double(int)>, int, int>();
        ExposureSettled exposure;
        int time = interval;
        while (!exposure.Feed(time, brightness(time)) && time < 10'000) time += interval;
        QVERIFY2(time >= least && time <= most, qPrintable(QString::number(time)));
        QVERIFY(exposure.Feed(time + interval, 0));
    }

    void RangesAreConverted_data() {
        const Rows<AVPixelFormat, AVColorRange, int, int> row;
        row("limited by default", AV_PIX_FMT_YUV420P, AVCOL_RANGE_UNSPECIFIED, 71, 180);
        row("full by its format", AV_PIX_FMT_YUVJ420P, AVCOL_RANGE_UNSPECIFIED, 64, 191);
        row("full as told", AV_PIX_FMT_YUV420P, AVCOL_RANGE_JPEG, 64, 191);
        row("grey", AV_PIX_FMT_GRAY8, AVCOL_RANGE_UNSPECIFIED, 64, 191);
    }
    // The left half dark, the right half bright; both sizes of rows: those that go straight into
    // the bitmap and those that do not.
    void RangesAreConverted() {
        const auto [format, range, dark, bright] = Row<AVPixelFormat, AVColorRange, int, int>();
        FrameScaler scaler;
        for (const QSize size : {QSize(64, 48), QSize(67, 49)}) {
            const FramePtr frame(av_frame_alloc());
            frame->format = format;
            frame->width = size.width();
            frame->height = size.height();
            frame->color_range = range;
            QVERIFY(av_frame_get_buffer(frame.get(), 0) >= 0);
            for (const AVBufferRef* plane : frame->buf)
                if (plane) memset(plane->data, 128, plane->size);
            for (int y = 0; y < size.height(); ++y) {
                uint8_t* const row = frame->data[0] + y * frame->linesize[0];
                std::fill_n(row, frame->linesize[0], static_cast<uint8_t>(bright));
                std::fill_n(row, size.width() / 2, static_cast<uint8_t>(dark));
            }
            Dib dib;
            QVERIFY(scaler.ToDib(*frame, dib));
            QVERIFY(dib.Valid() && QSize(dib.Width, dib.Height) == size);
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

    void PaddingIsLeftOut_data() {
        const Rows<AVPixelFormat, int, QByteArray, QByteArray> row;
        row("packed", AV_PIX_FMT_BGR24, 8, "abcdef  ghijkl  ", "abcdefghijkl");
        row("last row ends early", AV_PIX_FMT_BGR24, 8, "abcdef  ghijkl", "abcdefghijkl");
        row("planes", AV_PIX_FMT_YUV420P, 4, "ab  cd  e f ", "abcdef");
        row("two planes", AV_PIX_FMT_NV12, 4, "ab  cd  ef  ", "abcdef");
        row("cut", AV_PIX_FMT_BGR24, 8, "abcdef  ghijk", {});
    }
    void PaddingIsLeftOut() {
        const auto [pixels, rowBytes, source, tight] =
            Row<AVPixelFormat, int, QByteArray, QByteArray>();
        const VideoBuffer picture{0, reinterpret_cast<const uchar*>(source.constData()),
                                  source.size()};
        const std::vector<uchar> copied = WithoutPadding(picture, pixels, QSize(2, 2), rowBytes);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(copied.data()), qsizetype(copied.size())),
                 tight);
    }

    void FaultsAreNamed_data() {
        const Rows<int, CaptureKind, QString> row;
        row("device busy", AVERROR(EBUSY), CaptureKind::Device, "is in use by another program");
        row("node gone", AVERROR(ENOENT), CaptureKind::Device, "is not connected");
        row("host unknown", AVERROR(EIO), CaptureKind::Network, "cannot be reached");
        row("not allowed", AVERROR(EACCES), CaptureKind::Device, "may not be opened by this user");
        row("device broken", AVERROR(EIO), CaptureKind::Device, "has stopped delivering");
    }
    void FaultsAreNamed() {
        const auto [error, kind, end] = Row<int, CaptureKind, QString>();
        QCOMPARE(FaultSentence(FaultOfError(error, kind), "yard"), "Camera 'yard' " + end);
    }
};

QTEST_GUILESS_MAIN(CapturePartsTest)
#include "test_capture_parts.moc"
