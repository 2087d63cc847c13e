#include "picture/bitmap/picture_surface.h"
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

// A camera that does what the test says and writes down what it is asked.
class ScriptedCapture : public CaptureControl {
  public:
    explicit ScriptedCapture(QStringList& calls) : log(calls) {}

    bool Grabs = true;
    bool Saves = true;
    bool Runs = true;
    QByteArray Damaged;  // what lands in the file instead of the frame
    QImage Frame = FourQuarters(80, 60);

    bool GrabFrame() override {
        log << "grab";
        return Grabs;
    }
    bool SaveDIB(const QString& path) override {
        log << "save " + QFileInfo(path).fileName();
        if (!Damaged.isEmpty()) return WriteBytes(path, Damaged);
        return Saves && SaveSurface(Frame, path);
    }
    void SetPreviewRate(int rate) override { log << "rate " + QString::number(rate); }
    void SetPreview(bool on) override { log << (on ? u"preview on"_qs : u"preview off"_qs); }
    [[nodiscard]] bool Running() const override { return Runs; }

  private:
    QStringList& log;
};

}  // namespace

class TestPicturePipeline : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        folder = std::make_unique<QTemporaryDir>();
        boxes = {};
        calls.clear();
        state = {folder->path()};
        state.Locale = QLocale(QLocale::German, QLocale::Germany);
        state.CameraRunning = true;
        settings = {};
        settings.WorkPath = folder->path() + '/';
        settings.Overlay = OverlayMode::None;
        capture = std::make_unique<ScriptedCapture>(calls);
        pipeline = std::make_unique<PicturePipeline>(state, *capture, waiting, boxes, display);
    }

    void PublishesTheFrame() {
        clock.SetNow(QDateTime(QDate(2026, 11, 14), QTime(9, 30, 15)));
        settings.Archive = true;
        settings.ArchivePath = settings.WorkPath;
        settings.OverKombi = true;  // means nothing without a text
        QVERIFY(pipeline->MakePicture(settings));
        QCOMPARE(calls, QStringList({"grab", "save 1pw.bmp", "rate 10", "preview on"}));
        const DecodedJpeg picture(Path("1pw.jpg"));
        QVERIFY(picture.Shows(10, 10, Qt::red) && picture.Shows(70, 10, Qt::green));
        QVERIFY(picture.Shows(10, 50, Qt::blue) && picture.Shows(70, 50, Qt::white));
        QVERIFY(QFile::exists(Path("14.11.2026-093015.jpg")));
        QVERIFY(!QFile::exists(Path("1pw.bmp")));

        // The next frame, of another size, takes its place.
        capture->Frame = FourQuarters(64, 48).mirrored();
        QVERIFY(pipeline->MakePicture(settings));
        const DecodedJpeg next(Path("1pw.jpg"));
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
        row("no overlay, combined", OverlayMode::None, true, false, false);
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
        const DecodedJpeg picture(Path("1pw.jpg"));
        QVERIFY(picture.Shows(10, 10, Qt::red));
        QVERIFY(picture.Shows(150, 125, stamped ? Qt::blue : Qt::white));
        QVERIFY(picture.Shows(198, 148, written ? Qt::black : stamped ? Qt::blue : Qt::white, 60));
    }

    void SwitchesThePreview_data() {
        const Rows<bool, bool, QStringList> row;
        row("on", true, false, {"preview on"});
        row("off", false, false, {"preview off"});
        row("locked", false, true, {});
    }
    void SwitchesThePreview() {
        const auto [on, lock, preview] = Row<bool, bool, QStringList>();
        settings.CapturePreview = on;
        state.PreviewLock = lock;
        capture->Grabs = false;  // the preview is set even then
        QVERIFY(!pipeline->MakePicture(settings));
        QCOMPARE(calls, QStringList({"grab", "save 1pw.bmp", "rate 10"}) + preview);
    }

    void FaultsMakeNoPicture_data() {
        Rows<QString>({{"grab"},
                       {"save"},
                       {"camera off"},
                       {"control off"},
                       {"damaged frame"},
                       {"no overlay to send alone"}});
    }
    void FaultsMakeNoPicture() {
        const auto [fault] = Row<QString>();
        settings.Archive = true;
        settings.ArchivePath = settings.WorkPath;
        settings.Overlay = OverlayMode::PictureOnly;
        settings.PictureCapture = fault.startsWith("no overlay");
        // The surface and a bitmap left over still hold the picture of the cycle before.
        state.Picture2 = FourQuarters(80, 60);
        QVERIFY(SaveSurface(state.Picture2, Path("1pw.bmp")));
        QVERIFY(WriteBytes(Path("1pw.jpg"), "old"));
        capture->Grabs = fault != "grab";
        capture->Saves = fault != "save";
        capture->Runs = fault != "control off";
        state.CameraRunning = fault != "camera off";
        if (fault == "damaged frame") capture->Damaged = BitmapShape{}.Bytes().chopped(4);
        QVERIFY(!pipeline->MakePicture(settings));
        QCOMPARE(pipeline->Unwritten(), fault == "save" ? Path("1pw.bmp") : QString());
        QCOMPARE(ReadBytes(Path("1pw.jpg")), QByteArray("old"));
        QCOMPARE(QDir(settings.WorkPath).entryList({"*.jpg"}), QStringList{"1pw.jpg"});
        QVERIFY(boxes.Shown.isEmpty());
        // The frame without the overlay is not left for somebody to encode.
        if (settings.PictureCapture) QVERIFY(!QFile::exists(Path("1pw.bmp")));
    }

    void SavesTheCameraPreview_data() {
        const Rows<bool, bool, QStringList> row;
        row("frame", true, true, QStringList{"grab", "save cam.bmp"});
        row("no frame", false, true, QStringList{"grab"});
        row("camera off", true, false, QStringList{"grab"});
    }
    void SavesTheCameraPreview() {
        const auto [grabs, running, expected] = Row<bool, bool, QStringList>();
        capture->Grabs = grabs;
        state.CameraRunning = running;
        pipeline->SaveCamPreview(settings);
        QCOMPARE(calls, expected);
        QCOMPARE(QFile::exists(Path("cam.bmp")), expected.size() == 2);
    }

    // A folder of that name cannot be deleted as a file: that ends, and the other file goes all the
    // same.
    void DeletesWorkingFiles() {
        QVERIFY(QDir().mkpath(Path("1pw.jpg")));
        QVERIFY(WriteBytes(Path("1pw.bmp"), "x") && WriteBytes(Path("pw.jpg"), "x"));
        int yields = 0;
        connect(&waiting, &Waiting::Idle, this, [&yields] { ++yields; });
        pipeline->DeleteWorkingFiles(settings);
        QCOMPARE(yields, 1000 + 1);
        QVERIFY(!QFile::exists(Path("1pw.bmp")));
        QVERIFY(QFile::exists(Path("1pw.jpg")) && QFile::exists(Path("pw.jpg")));
    }

  private:
    [[nodiscard]] QString Path(const QString& name) const { return settings.WorkPath + name; }

    std::unique_ptr<QTemporaryDir> folder;
    TestClock clock;
    Waiting waiting{clock};
    AnsweringBoxes boxes;
    QStringList calls;
    PictureState state;
    PictureSettings settings;
    RecordingDisplay display;
    std::unique_ptr<ScriptedCapture> capture;
    std::unique_ptr<PicturePipeline> pipeline;
};

QTEST_MAIN(TestPicturePipeline)
#include "test_picture_pipeline.moc"
