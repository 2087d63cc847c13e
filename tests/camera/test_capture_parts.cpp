// The pieces of the capture control that need no camera: choosing a format, telling whole pictures
// from cut ones, waiting for the exposure, converting.

#include "camera/capture_format.h"
#include "camera/exposure_settled.h"
#include "camera/frame_geometry.h"
#include "camera/frame_scaler.h"
#include "camera/packet_backlog.h"
#include "camera/test_capture_aids.h"
#include "camera/whole_picture.h"
#include "support/data_rows.h"

#include <QTest>

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
        row("compressed where raw is too slow", webcam, "", "1920x1080@15 mjpeg");
        row("raw where it is fast enough", webcam, "1280x720", "1280x720@10 yuyv422");
        row("rate asked for rules raw out", webcam, "1280x720@25", "1280x720@25 mjpeg");
        row("raw costs less up to fifteen", webcam, "640x480@15", "640x480@15 yuyv422");
        row("compressed costs less beyond", webcam, "640x480@25", "640x480@25 mjpeg");
        row("nearest size", webcam, "650X470", "640x480@15 yuyv422");
        row("fast before large", {Raw(1920, 1080, 2), Raw(800, 600, 30)}, "", "800x600@15 yuyv422");
        row("nothing offered", {}, "640x480@5", "640x480@5 ");
        const CaptureFormat rated{640, 480, 60, "mjpeg", true, {60, 29.996, 10}};
        row("rate told more exactly", {rated}, "640x480@30", "640x480@29.996 mjpeg");
        const CaptureFormat fixed{640, 480, 30, "yuyv422", false, {30, 2}};
        row("rate below five not taken", {fixed}, "", "640x480@30 yuyv422");
        row("raw that comes too fast", {fixed, rated}, "", "640x480@10 mjpeg");
        const CaptureFormat h264{640, 480, 60, "h264", true};
        row("pictures made from each other last", {h264, fixed, rated}, "", "640x480@10 mjpeg");
    }
    void FormatIsChosen() {
        const auto [offered, asked, expected] = Row<QList<CaptureFormat>, QString, QString>();
        const auto chosen = ChooseCaptureFormat(offered, asked);
        QVERIFY(chosen);
        QCOMPARE(Text(*chosen), expected);
    }

    void CutJpegIsToldApart_data() {
        const Rows<QByteArray, bool> row;
        const QByteArray jpeg = JpegPicture(QSize(64, 48), 1);
        QByteArray thumbnail = jpeg;
        const QByteArray inner = QByteArray::fromHex("FFE1000AFFD84142FFD94344");
        thumbnail.insert(2, inner);
        row("whole", jpeg, true);
        row("padded", jpeg + QByteArray(500, '\0'), true);
        row("small picture inside", thumbnail, true);
        row("end missing", jpeg.chopped(2), false);
        row("only the small picture has its end", thumbnail.left(thumbnail.size() - 30), false);
        row("segment beyond the end", QByteArray::fromHex("FFD8FFE0FFFF0000"), false);
    }
    void CutJpegIsToldApart() {
        const auto [bytes, whole] = Row<QByteArray, bool>();
        QCOMPARE(JpegWhole(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size()), whole);
    }

    void ExposureSettles_data() {
        const Rows<std::function<double(int)>, int, int> row;
        row("rising for a second", {[](int t) { return std::min(t, 1000) / 10.0; }}, 950, 1150);
        row("night", {[](int t) { return t % 2 * 0.5; }}, 300, 340);
        row("endless flicker", {[](int t) { return t / 33 % 2 * 99.0; }}, 3000, 3040);
    }
    void ExposureSettles() {
        const auto [brightness, least, most] = Row<std::function<double(int)>, int, int>();
        constexpr int interval = 33;
        ExposureSettled exposure;
        int time = interval;
        while (!exposure.Feed(time, brightness(time)) && time < 10'000) time += interval;
        QVERIFY2(time >= least && time <= most, qPrintable(QString::number(time)));
        QVERIFY(exposure.Feed(time + interval, 0));
    }

    void BacklogIsSoonDecoded_data() {
        const Rows<int, int, bool> row;  // milliseconds that a packet takes, at first and later
        row("fast", 3, 3, false);
        row("slow", 30, 30, true);
        row("slow from a grab on", 3, 30, true);
        row("slower than they come", 3, 60, true);
    }
    // Key pictures are twenty seconds apart; after five somebody wants a picture, and at the end.
    void BacklogIsSoonDecoded() {
        const auto [before, later, unasked] = Row<int, int, bool>();
        PacketBacklog::Time time;
        std::chrono::milliseconds cost(before);
        int decoded = 0;
        PacketBacklog backlog(
            [&](const AVPacket&) {
                time += cost;
                return ++decoded > 0;
            },
            [&] { return time; });
        const auto grab = [&] {
            const auto start = time;
            while (!backlog.Empty()) backlog.DecodeOldest();
            return time - start;
        };
        const PacketPtr packet(av_packet_alloc());
        constexpr std::chrono::milliseconds interval(40);
        auto arrival = time;
        for (int i = 0; i < 500; ++i) {
            time = std::max(time, arrival += interval);
            if (i == 125) {
                cost = std::chrono::milliseconds(later);
                (void)grab();
                decoded = 0;
            }
            backlog.Add(*packet);
        }
        QVERIFY2(time - arrival < std::chrono::milliseconds(400), "read as they come");
        QCOMPARE(decoded > 0, unasked);
        if (later < interval.count()) QVERIFY(grab() < std::chrono::milliseconds(2500));
    }

    void GeometryIsRead_data() {
        const Rows<QSize, AVRational, QSize> row;  // stored, proportions of a pixel, shown
        row("not told", {641, 359}, {0, 1}, {641, 359});
        row("wide", {720, 576}, {16, 11}, {1048, 576});
        row("narrow", {720, 480}, {8, 9}, {640, 480});
        row("one field", {704, 288}, {6, 11}, {768, 576});
        row("hardly off", {1281, 720}, {1280, 1281}, {1281, 720});
        row("out of reason", {640, 480}, {100, 1}, {640, 480});
        row("too large", {5000, 480}, {2, 1}, {5000, 480});
    }
    void GeometryIsRead() {
        const auto [stored, pixel, shown] = Row<QSize, AVRational, QSize>();
        const FramePtr frame(av_frame_alloc());
        frame->width = stored.width();
        frame->height = stored.height();
        frame->sample_aspect_ratio = pixel;
        QCOMPARE(GeometryOf(*frame).Shown(), shown);
    }

    void ColoursAreConverted_data() {
        using Values = std::array<int, 3>;
        const Rows<AVPixelFormat, AVColorSpace, AVColorRange, Values, Values>
            row;  // the last: brightness and colours as they are stored; blue, green, red
        const auto unknown = AVCOL_SPC_UNSPECIFIED;
        const auto any = AVCOL_RANGE_UNSPECIFIED;
        const Values skin{40, 100, 200};
        row("limited by default", AV_PIX_FMT_YUV420P, unknown, any, {122, 87, 176}, skin);
        row("full range", AV_PIX_FMT_YUV444P, unknown, AVCOL_RANGE_JPEG, {123, 81, 183}, skin);
        row("full by its format", AV_PIX_FMT_YUVJ420P, unknown, any, {123, 81, 183}, skin);
        row("high definition", AV_PIX_FMT_YUV420P, AVCOL_SPC_BT709, any, {116, 92, 174}, skin);
        row("grey", AV_PIX_FMT_GRAY8, unknown, any, {64, 0, 0}, {64, 64, 64});
    }
    // An interlaced frame, black in the other field; both sizes of rows: those that go straight
    // into the bitmap and those that do not.
    void ColoursAreConverted() {
        const auto [format, space, range, stored, seen] =
            Row<AVPixelFormat, AVColorSpace, AVColorRange, std::array<int, 3>,
                std::array<int, 3>>();
        FrameScaler scaler;
        for (const QSize size : {QSize(64, 48), QSize(67, 49)}) {
            const FramePtr frame(av_frame_alloc());
            frame->format = format;
            frame->width = size.width();
            frame->height = size.height();
            frame->colorspace = space;
            frame->color_range = range;
            frame->interlaced_frame = 1;
            QVERIFY(av_frame_get_buffer(frame.get(), 0) >= 0);
            for (size_t plane = 0; plane < stored.size() && frame->data[plane]; ++plane) {
                const int step = frame->linesize[plane];
                const int rows =
                    step < frame->linesize[0] ? (frame->height + 1) / 2 : frame->height;
                for (int y = 0; y < rows; ++y)
                    memset(frame->data[plane] + y * step, y % 2 ? 0 : stored[plane], size_t(step));
            }
            const QImage picture = scaler.ToPicture(*frame);
            QCOMPARE(picture.size(), size);
            const auto near = [&seen = seen](int value, int channel) {
                return std::abs(value - seen[size_t(channel)]) <= 5;
            };
            for (int y = 0; y < size.height(); ++y) {
                for (int at = 0; at < size.width() * 3; ++at)
                    QVERIFY(near(picture.constScanLine(y)[at], at % 3));
            }
            const QColor shown = scaler.ToImage(*frame, {}).pixelColor(10, 11);
            QVERIFY(near(shown.blue(), 0) && near(shown.green(), 1) && near(shown.red(), 2));
            QVERIFY(std::abs(scaler.Brightness(*frame) - qGray(seen[2], seen[1], seen[0])) < 16);
        }
    }
};

QTEST_GUILESS_MAIN(CapturePartsTest)
#include "test_capture_parts.moc"
