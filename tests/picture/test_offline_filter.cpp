#include "picture/decoded_jpeg.h"
#include "picture/offline_filter.h"
#include "support/answering_boxes.h"
#include "support/data_rows.h"
#include "support/recording_display.h"
#include "support/test_clock.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cmath>

namespace {

// Not used: the filter takes the picture that is there.
class NoCapture : public CaptureControl {
  public:
    [[nodiscard]] bool GrabFrame() override { return false; }
    [[nodiscard]] bool SaveDIB(const QString&) override { return false; }
    void SetPreviewRate(int) override {}
    void SetPreview(bool) override {}
    [[nodiscard]] bool Running() const override { return false; }
};

QImage Slope(int width, int height, int red) {
    QImage image(width, height, QImage::Format_BGR888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(red, x * 255 / width, y * 255 / height));
    return image;
}

// One channel as it is defined: nearest whole number, halves to the even one.
int Blended(int camera, int offline, int percent) {
    return static_cast<int>(std::nearbyint((camera * (100 - percent) + offline * percent) / 100.0));
}

QImage BlendedPicture(QImage camera, const QImage& offline, int percent) {
    for (int y = 0; y < camera.height(); ++y)
        for (int x = 0; x < camera.width(); ++x) {
            if (!offline.valid(x, y)) continue;
            const QRgb a = camera.pixel(x, y);
            const QRgb b = offline.pixel(x, y);
            camera.setPixel(
                x, y,
                qRgb(Blended(qRed(a), qRed(b), percent), Blended(qGreen(a), qGreen(b), percent),
                     Blended(qBlue(a), qBlue(b), percent)));
        }
    return camera;
}

// The first entry of the quantisation table: 6 at quality 80, 27 at 30.
int Quantisation(const QString& jpeg) {
    const QByteArray bytes = ReadBytes(jpeg);
    return static_cast<uchar>(bytes.at(bytes.indexOf("\xFF\xDB") + 5));
}

}  // namespace

class TestOfflineFilter : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(folder->path()).mkpath("Offline"));
        QVERIFY(QDir(folder->path()).mkpath("web"));
        display = {};
        boxes = {};
        state = {folder->path()};
        settings = {};
        settings.WorkPath = folder->path() + '/';
        settings.JPGQuality = 30;
        waiting = std::make_unique<Waiting>(clock);
        pipeline = std::make_unique<PicturePipeline>(state, capture, *waiting, boxes, display);
        filter = std::make_unique<OfflineFilter>(state, *pipeline, *waiting, display);
    }

    void BlendsEveryValue() {
        QCOMPARE(int{BlendChannel(255, 0, 50)}, 128);
        QCOMPARE(int{BlendChannel(255, 254, 50)}, 254);
        for (const int percent : {0, 1, 25, 33, 50, 66, 90, 99, 100})
            for (int camera = 0; camera < 256; ++camera)
                for (int offline = 0; offline < 256; ++offline)
                    QCOMPARE(int{BlendChannel(camera, offline, percent)},
                             Blended(camera, offline, percent));
    }

    void BlendsWholePictures_data() {
        const Rows<QSize, int, bool> row;
        row("same size", QSize(47, 31), 50, false);
        row("smaller", QSize(33, 12), 50, false);
        row("larger", QSize(80, 90), 50, false);
        row("one pixel", QSize(1, 1), 50, false);
        row("more than all", QSize(47, 31), 150, false);
        row("local mode", QSize(47, 31), 50, true);
    }
    void BlendsWholePictures() {
        const auto [offlineSize, percent, local] = Row<QSize, int, bool>();
        if (local) settings.Server = "Local";
        settings.Verzeichnis = Path("web/");
        settings.Offlinefile = "OFF.png";
        const QImage offline = Slope(offlineSize.width(), offlineSize.height(), 40);
        QVERIFY(offline.save(Path("Offline/off.PNG"), "PNG"));
        const QString source = local ? Path("web/pw.jpg") : Path("1pw.jpg");
        QVERIFY(Slope(47, 31, 220).save(source, "JPG", 90));
        const QImage expected =
            BlendedPicture(DecodedJpeg(source).Picture, offline, std::min(percent, 100));

        QVERIFY(filter->ApplyOfflineFilter(percent, settings));
        QCOMPARE(state.Picture2.convertToFormat(QImage::Format_RGB888), expected);
        for (const QString& made :
             local ? QStringList{source, Path("1pw.jpg")} : QStringList{source}) {
            QCOMPARE(Quantisation(made), 6);
            QVERIFY(DecodedJpeg(made).Shows(20, 3, expected.pixelColor(20, 3), 25));
        }
        QVERIFY(!QFile::exists(Path("1pw.bmp")));
        QCOMPARE(display.Statuses.count("processing Offline-Picture"), 5);
        display.Statuses.removeAll("processing Offline-Picture");
        QCOMPARE(display.Statuses,
                 QStringList({"create Offline - Picture", "sending Offline - Picture"}));
    }

    void FaultsPublishNothing_data() {
        const Rows<QString, QString> row;
        row("missing", "missing", "Offline file not found !");
        row("cut off", "cut off", "Offline file cannot be read");
        row("camera", "camera", "The camera picture cannot be read");
        row("target", "target", "Cannot write the offline picture");
    }
    void FaultsPublishNothing() {
        const auto [fault, status] = Row<QString, QString>();
        const QString offline = Path("Offline/Offline.jpg");
        QVERIFY(Slope(30, 20, 9).save(offline, "JPG"));
        QVERIFY(Slope(30, 20, 99).save(Path("1pw.jpg"), "JPG"));
        const QByteArray before = ReadBytes(Path("1pw.jpg"));
        if (fault == "missing") QVERIFY(QFile::remove(offline));
        if (fault == "cut off") QVERIFY(WriteBytes(offline, ReadBytes(offline).chopped(40)));
        if (fault == "camera") QVERIFY(WriteBytes(Path("1pw.jpg"), before.chopped(40)));
        // A folder in the way of the bitmap.
        if (fault == "target") QVERIFY(QDir().mkpath(Path("1pw.bmp/x")));
        QVERIFY(!filter->ApplyOfflineFilter(50, settings));
        QCOMPARE(display.Statuses.last(), status);
        QVERIFY(before.startsWith(ReadBytes(Path("1pw.jpg"))));
        QVERIFY(!filter->Busy());
    }

    void EventsRunDuringTheBlend() {
        QVERIFY(Slope(200, 20, 9).save(Path("Offline/Offline.jpg"), "JPG"));
        QVERIFY(Slope(200, 20, 99).save(Path("1pw.jpg"), "JPG"));
        int events = 0;
        QTimer often;
        connect(&often, &QTimer::timeout, this, [&] { ++events; });
        often.start(0);
        QVERIFY(filter->ApplyOfflineFilter(50, settings));
        QVERIFY2(events >= 20, qPrintable(QString::number(events)));
    }

  private:
    [[nodiscard]] QString Path(const QString& name) const { return folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> folder;
    TestClock clock;
    AnsweringBoxes boxes;
    RecordingDisplay display;
    NoCapture capture;
    PictureState state;
    PictureSettings settings;
    std::unique_ptr<Waiting> waiting;
    std::unique_ptr<PicturePipeline> pipeline;
    std::unique_ptr<OfflineFilter> filter;
};

QTEST_GUILESS_MAIN(TestOfflineFilter)
#include "test_offline_filter.moc"
