#include "base/waiting.h"
#include "picture/bitmap/picture_surface.h"
#include "picture/blend.h"
#include "picture/decoded_jpeg.h"
#include "picture/picture_pipeline.h"
#include "support/answering_boxes.h"
#include "support/data_rows.h"
#include "support/recording_display.h"
#include "support/test_clock.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A camera that does what the test says and writes down how the preview is switched.
class ScriptedCapture : public CaptureControl {
  public:
    bool Grabs = true;
    bool Saves = true;
    bool Runs = true;
    bool InMemory = false;
    QByteArray Damaged;  // what lands in the file instead of the frame
    QImage Frame = FourQuarters(80, 60);
    QList<bool> Previews;

    bool GrabFrame() override { return Grabs; }
    bool SaveDIB(const QString& path) override {
        if (!Damaged.isEmpty()) return WriteBytes(path, Damaged);
        return Saves && SaveSurface(Frame, path);
    }
    QImage TakeFrame() override { return InMemory ? Frame : QImage(); }
    void SetPreviewRate(int) override {}
    void SetPreview(bool on) override { Previews << on; }
    [[nodiscard]] bool Running() const override { return Runs; }
};

}  // namespace

class TestPicturePipeline : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        folder = std::make_unique<QTemporaryDir>();
        for (const QString& name : QStringList{"work", "site", "archive"})
            QVERIFY(QDir().mkpath(Path(name)));
        boxes = {};
        state = {folder->path()};
        state.Locale = QLocale(QLocale::German, QLocale::Germany);
        state.CameraRunning = true;
        clock.SetNow(QDateTime(QDate(2026, 11, 14), QTime(9, 30, 15)));
        settings = {};
        settings.WorkPath = Path("work/");
        settings.Verzeichnis = Path("site/");
        settings.ArchivePath = Path("archive/");
        settings.Archive = true;
        settings.Overlay = OverlayMode::None;
        capture = std::make_unique<ScriptedCapture>();
        pipeline = std::make_unique<PicturePipeline>(state, *capture, waiting, boxes, display);
    }

    void PublishesTheFrame() {
        settings.OverKombi = true;  // means nothing without a text
        settings.JPGQuality = 80;
        // Of rows that are padded in a bitmap, and of more than one piece of them.
        capture->Frame = FourQuarters(333, 300);
        QVERIFY(pipeline->MakePicture(settings));
        QCOMPARE(capture->Previews, QList<bool>{true});
        const DecodedJpeg picture{ReadBytes(Path("work/1pw.jpg"))};
        QVERIFY(picture.Shows(10, 10, Qt::red) && picture.Shows(320, 10, Qt::green));
        QVERIFY(picture.Shows(10, 290, Qt::blue) && picture.Shows(320, 290, Qt::white));
        QVERIFY(picture.HasQuality80());
        QTRY_COMPARE(ReadBytes(Path("archive/14.11.2026-093015.jpg")), picture.Bytes);
        QCOMPARE(Files("work"), QStringList{"1pw.jpg"});

        // The next frame, of another size, takes its place.
        capture->Frame = FourQuarters(64, 48).mirrored();
        QVERIFY(pipeline->MakePicture(settings));
        const DecodedJpeg next{ReadBytes(Path("work/1pw.jpg"))};
        QCOMPARE(next.Picture.size(), QSize(64, 48));
        QVERIFY(next.Shows(10, 10, Qt::blue));
        QCOMPARE(state.LastHeader.Width, 64);
    }

    void FollowsTheOverlayMode_data() {
        // Whether the overlay picture is stamped, whether text is written over it.
        const Rows<OverlayMode, bool, bool, bool> row;
        row("text alone", OverlayMode::Time, false, false, true);
        row("text combined", OverlayMode::Date, true, true, true);
        row("picture only", OverlayMode::PictureOnly, false, true, false);
        row("no overlay", OverlayMode::None, false, false, false);
    }
    void FollowsTheOverlayMode() {
        const auto [mode, combined, stamped, written] = Row<OverlayMode, bool, bool, bool>();
        QVERIFY(QDir().mkpath(Path("overlay")));
        QImage logo(60, 30, QImage::Format_BGR888);
        logo.fill(Qt::blue);
        logo.setPixelColor(0, 0, Qt::white);
        QVERIFY(SaveSurface(logo, Path("overlay/Overlay.bmp")));
        settings.Overlay = mode;
        settings.OverKombi = combined;
        settings.PositionBild = OverlayPlace::DownRight;
        settings.Position = OverlayPlace::DownRight;
        settings.BackColor = Qt::black;
        settings.Size = 9;
        capture->Frame = FourQuarters(200, 150);
        QVERIFY(pipeline->MakePicture(settings));
        const DecodedJpeg picture{ReadBytes(Path("work/1pw.jpg"))};
        // Again, without reading the bitmap, and in the one of the last picture, which is kept.
        capture->InMemory = true;
        QVERIFY(pipeline->MakePicture(settings) && pipeline->MakePicture(settings));
        QCOMPARE(ReadBytes(Path("work/1pw.jpg")), picture.Bytes);
        QImage bitmap;
        QVERIFY(LoadSurface(bitmap, Path("work/1pw.bmp.part")));
        QCOMPARE(bitmap.pixelColor(150, 125), QColor(stamped ? Qt::blue : Qt::white));
        QVERIFY(bitmap.pixelColor(10, 10) == Qt::red && bitmap.pixelColor(10, 140) == Qt::blue);
        QVERIFY(picture.Shows(10, 10, Qt::red));
        QVERIFY(picture.Shows(150, 125, stamped ? Qt::blue : Qt::white));
        QVERIFY(picture.Shows(198, 148, written ? Qt::black : stamped ? Qt::blue : Qt::white, 60));
    }

    // Even when no frame comes, but not while a window has the preview for itself.
    void SwitchesThePreview() {
        capture->Grabs = false;
        settings.CapturePreview = false;
        QVERIFY(!pipeline->MakePicture(settings));
        state.PreviewLock = true;
        QVERIFY(!pipeline->MakePicture(settings));
        QCOMPARE(capture->Previews, QList<bool>{false});
    }

    void LocalMode_data() {
        const Rows<bool> row;
        row("over the old one", false);
        row("delete the old one", true);
    }
    void LocalMode() {
        const auto [deleteFirst] = Row<bool>();
        QVERIFY(WriteBytes(Path("site/pw.jpg"), "old"));
        settings.Server = "Local";
        settings.Delete = deleteFirst;
        QVERIFY(pipeline->MakePicture(settings));
        QCOMPARE(Files("site"), QStringList{"pw.jpg"});
        const DecodedJpeg picture{ReadBytes(Path("site/pw.jpg"))};
        QVERIFY(picture.Shows(10, 50, Qt::blue));
        QCOMPARE(ReadBytes(Path("work/1pw.jpg")), picture.Bytes);
        pipeline.reset();
        QCOMPARE(ReadBytes(Path("archive/14.11.2026-093015.jpg")), picture.Bytes);
    }

    void Archives_data() {
        const Rows<bool, QLocale, QStringList> row;
        row("off", false, QLocale("de_DE"), {});
        row("four digits of the year stay", true, QLocale("sv_SE"), {"2026-11-14-093015.jpg"});
        row("slashes in the date are no fault of the picture", true, QLocale("en_US"), {});
    }
    void Archives() {
        const auto [on, locale, archived] = Row<bool, QLocale, QStringList>();
        settings.Archive = on;
        state.Locale = locale;
        QVERIFY(pipeline->MakePicture(settings));
        pipeline.reset();
        QCOMPARE(Files("archive"), archived);
        QVERIFY(boxes.Shown.isEmpty());
    }

    void FaultsKeepTheOldPicture_data() {
        Rows<QString>({{"grab"},
                       {"save"},
                       {"camera off"},
                       {"control off"},
                       {"damaged frame"},
                       {"no overlay to send alone"}});
    }
    void FaultsKeepTheOldPicture() {
        const auto [fault] = Row<QString>();
        settings.Overlay = OverlayMode::PictureOnly;
        settings.PictureCapture = fault.startsWith("no overlay");
        // The surface and a bitmap left over still hold the picture of the cycle before.
        state.Picture2 = FourQuarters(80, 60);
        QVERIFY(SaveSurface(state.Picture2, Path("work/1pw.bmp")));
        QVERIFY(WriteBytes(Path("work/1pw.jpg"), "old"));
        capture->Grabs = fault != "grab";
        capture->Saves = fault != "save";
        capture->Runs = fault != "control off";
        state.CameraRunning = fault != "camera off";
        if (fault == "damaged frame") capture->Damaged = BitmapShape{}.Bytes().chopped(4);
        QVERIFY(!pipeline->MakePicture(settings));
        QCOMPARE(ReadBytes(Path("work/1pw.jpg")), QByteArray("old"));
        pipeline.reset();
        QVERIFY(Files("archive").isEmpty() && boxes.Shown.isEmpty());
        // The frame without the overlay is not left for somebody to encode.
        if (settings.PictureCapture) QVERIFY(!QFile::exists(Path("work/1pw.bmp")));
    }

    // Every level of the camera's with every one of the offline picture, halves to the even one.
    void BlendsTwoPictures() {
        QImage offline(256, 256, QImage::Format_BGR888);
        for (int i = 0; i < 256 * 256; ++i) offline.setPixel(i % 256, i / 256, qRgb(i % 256, 0, 0));
        for (const int percent : {0, 33, 50, 75, 100}) {
            QImage camera(300, 256, QImage::Format_BGR888);
            for (int y = 0; y < 256; ++y)
                for (int x = 0; x < 300; ++x) camera.setPixel(x, y, qRgb(y, 0, 0));
            for (int y = 0; y < 256; y += 50) BlendRows(camera, offline, percent, y, 50);
            for (int i = 0; i < 256 * 256; ++i) {
                const int sum = i / 256 * (100 - percent) + i % 256 * percent;
                const bool up = sum % 100 > 50 || (sum % 100 == 50 && sum / 100 % 2 == 1);
                QCOMPARE(qRed(camera.pixel(i % 256, i / 256)), sum / 100 + (up ? 1 : 0));
            }
            QCOMPARE(qRed(camera.pixel(299, 255)), 255);
        }
    }

    // A folder of that name cannot be deleted as a file: that ends, and the other file goes all the
    // same.
    void DeletesWorkingFiles() {
        QVERIFY(QDir().mkpath(Path("work/1pw.jpg")));
        QVERIFY(WriteBytes(Path("work/1pw.bmp"), "x") && WriteBytes(Path("work/pw.jpg"), "x"));
        pipeline->DeleteWorkingFiles(settings);
        QCOMPARE(Files("work"), QStringList{"pw.jpg"});
        QVERIFY(!pipeline->EncodeJpeg(settings));
        QCOMPARE(boxes.Shown, QStringList{"Error encountered!: Cannot find file"});
    }

  private:
    [[nodiscard]] QString Path(const QString& name) const { return folder->filePath(name); }
    [[nodiscard]] QStringList Files(const QString& name) const {
        return QDir(Path(name)).entryList(QDir::Files, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> folder;
    TestClock clock;
    Waiting waiting{clock};
    AnsweringBoxes boxes;
    PictureState state;
    PictureSettings settings;
    RecordingDisplay display;
    std::unique_ptr<ScriptedCapture> capture;
    std::unique_ptr<PicturePipeline> pipeline;
};

QTEST_MAIN(TestPicturePipeline)
#include "test_picture_pipeline.moc"
