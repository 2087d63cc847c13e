#include "picture/bitmap/picture_surface.h"
#include "picture/decoded_jpeg.h"
#include "picture/picture_pipeline.h"
#include "support/answering_boxes.h"
#include "support/data_rows.h"
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

class ScriptedOverlays : public OverlaySteps {
  public:
    ScriptedOverlays(PictureState& pictureState, QStringList& calls)
        : state(pictureState), log(calls) {}

    bool Stamps = true;
    bool LosesTheSurface = false;

    void BuildOverlayText() override { log << "build " + QString::number(state.OverlayMode); }
    bool StampOverlayPicture() override {
        log << (state.OnlyOverlay ? u"stamp alone"_qs : u"stamp"_qs);
        return Stamps && LoadSurface(state.Picture2, state.WorkPath + "1pw.bmp");
    }
    void DrawOverlayText() override {
        log << "text";
        // Over the white quarter.
        for (int y = 40; y < 60; ++y)
            for (int x = 60; x < 80; ++x) state.Picture2.setPixelColor(x, y, Qt::black);
        if (LosesTheSurface) state.Picture2 = {};
    }

  private:
    PictureState& state;
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
        state = {};
        state.WorkPath = folder->path() + '/';
        state.SettingsFile = Path("ftpOptions.ini");
        state.CameraRunning = true;
        capture = std::make_unique<ScriptedCapture>(calls);
        overlays = std::make_unique<ScriptedOverlays>(state, calls);
        pipeline = std::make_unique<PicturePipeline>(state, *capture, waiting, boxes);
        pipeline->SetOverlaySteps(overlays.get());
    }

    void PublishesTheFrame() {
        clock.SetNow(QDateTime(QDate(2026, 11, 14), QTime(9, 30, 15)));
        state.Archive = true;
        state.ArchivePath = state.WorkPath;
        state.Locale = QLocale(QLocale::German, QLocale::Germany);
        pipeline->SetOverlaySteps(nullptr);
        QVERIFY(WriteSettings("Overlay=4\r\nOverKombi=1"));
        QVERIFY(pipeline->MakePicture());
        QCOMPARE(calls, QStringList({"grab", "save 1pw.bmp", "rate 10", "preview on"}));
        const DecodedJpeg picture(Path("1pw.jpg"));
        QVERIFY(picture.Shows(10, 10, Qt::red) && picture.Shows(70, 10, Qt::green));
        QVERIFY(picture.Shows(10, 50, Qt::blue) && picture.Shows(70, 50, Qt::white));
        QVERIFY(QFile::exists(Path("14.11.2026-093015.jpg")));
        QVERIFY(!QFile::exists(Path("1pw.bmp")));

        // The next frame, of another size, takes its place.
        capture->Frame = FourQuarters(64, 48).mirrored();
        QVERIFY(pipeline->MakePicture());
        const DecodedJpeg next(Path("1pw.jpg"));
        QCOMPARE(next.Picture.size(), QSize(64, 48));
        QVERIFY(next.Shows(10, 10, Qt::blue));
        QCOMPARE(state.LastHeader.Width, 64);
    }

    void FollowsTheOverlayMode_data() {
        const Rows<QByteArray, QByteArray, int, QStringList> row;
        row("nothing set is mode 0", "", "", 0, {"text"});
        row("text alone", "Overlay=3\r\nOverKombi=0", "", 3, {"text"});
        row("any number combines", "Overlay=1\r\nOverKombi=-7", "", 1, {"stamp", "text"});
        row("picture only", "Overlay=4\r\nOverKombi=0", "", 4, {"stamp"});
        row("picture only, combined", "Overlay=4\r\nOverKombi=1", "", 4, {"stamp"});
        row("no overlay, combined", "Overlay=5\r\nOverKombi=1", "", 5, {});
        row("beyond the modes", "Overlay=6\r\nOverKombi=1", "", 5, {});
        row("below the modes", "Overlay=-1\r\nOverKombi=1", "", 5, {});
        row("overlay instead of the frame", "Overlay=4", "Capture=1", 4, {"stamp alone"});
    }
    void FollowsTheOverlayMode() {
        const auto [general, section, mode, steps] =
            Row<QByteArray, QByteArray, int, QStringList>();
        QVERIFY(WriteSettings(general, section));
        QVERIFY(pipeline->MakePicture());
        QCOMPARE(calls.mid(4), QStringList("build " + QString::number(mode)) + steps);
        const DecodedJpeg picture(Path("1pw.jpg"));
        QVERIFY(picture.Shows(10, 10, Qt::red));
        QVERIFY(picture.Shows(72, 52, steps.contains("text") ? Qt::black : Qt::white));
    }

    void SwitchesThePreview_data() {
        const Rows<QByteArray, bool, QStringList> row;
        row("no key", QByteArray(), false, QStringList{"preview on"});
        row("0", QByteArray("Preview=0"), false, QStringList{"preview off"});
        row("-1", QByteArray("Preview=-1"), false, QStringList{"preview on"});
        row("locked", QByteArray("Preview=0"), true, QStringList());
    }
    void SwitchesThePreview() {
        const auto [general, lock, preview] = Row<QByteArray, bool, QStringList>();
        QVERIFY(WriteSettings(general + "\r\nOverlay=5"));
        state.PreviewLock = lock;
        capture->Grabs = false;  // the preview is set even then
        QVERIFY(!pipeline->MakePicture());
        QCOMPARE(calls, QStringList({"grab", "save 1pw.bmp", "rate 10"}) + preview);
    }

    void FaultsMakeNoPicture_data() {
        Rows<QString>({{"grab"},
                       {"save"},
                       {"camera off"},
                       {"control off"},
                       {"damaged frame"},
                       {"stamp"},
                       {"surface lost"}});
    }
    void FaultsMakeNoPicture() {
        const auto [fault] = Row<QString>();
        state.Archive = true;
        state.ArchivePath = state.WorkPath;
        QVERIFY(WriteSettings(fault == "stamp" ? "Overlay=4" : "Overlay=0"));
        // The surface and a bitmap left over still hold the picture of the cycle before.
        state.Picture2 = FourQuarters(80, 60);
        QVERIFY(SaveSurface(state.Picture2, Path("1pw.bmp")));
        QVERIFY(WriteBytes(Path("1pw.jpg"), "old"));
        capture->Grabs = fault != "grab";
        capture->Saves = fault != "save";
        capture->Runs = fault != "control off";
        state.CameraRunning = fault != "camera off";
        if (fault == "damaged frame") capture->Damaged = BitmapShape{}.Bytes().chopped(4);
        overlays->Stamps = fault != "stamp";
        overlays->LosesTheSurface = fault == "surface lost";
        QVERIFY(!pipeline->MakePicture());
        QCOMPARE(ReadBytes(Path("1pw.jpg")), QByteArray("old"));
        QCOMPARE(QDir(state.WorkPath).entryList({"*.jpg"}), QStringList{"1pw.jpg"});
        QVERIFY(boxes.Shown.isEmpty());
        // The frame without the overlay is not left for somebody to encode.
        if (fault == "surface lost") QVERIFY(!QFile::exists(Path("1pw.bmp")));
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
        pipeline->SaveCamPreview();
        QCOMPARE(calls, expected);
        QCOMPARE(QFile::exists(Path("cam.bmp")), expected.size() == 2);
    }

    void DeletesWorkingFiles() {
        for (const QString& name : QStringList{"1pw.jpg", "1pw.bmp", "pw.jpg"})
            QVERIFY(WriteBytes(Path(name), "x"));
        pipeline->DeleteWorkingFiles();
        QCOMPARE(QDir(state.WorkPath).entryList(QDir::Files), QStringList{"pw.jpg"});
        pipeline->DeleteWorkingFiles();
    }

    // A folder of that name cannot be deleted as a file: that ends, and the other file goes all the
    // same.
    void GivesUpDeleting() {
        QVERIFY(QDir().mkpath(Path("1pw.jpg")));
        QVERIFY(WriteBytes(Path("1pw.bmp"), "x"));
        int yields = 0;
        connect(&waiting, &Waiting::Idle, this, [&yields] { ++yields; });
        pipeline->DeleteWorkingFiles();
        QCOMPARE(yields, 1000 + 1);
        QVERIFY(!QFile::exists(Path("1pw.bmp")));
        QVERIFY(QFile::exists(Path("1pw.jpg")));
    }

  private:
    [[nodiscard]] QString Path(const QString& name) const { return state.WorkPath + name; }
    [[nodiscard]] bool WriteSettings(const QByteArray& general, const QByteArray& picture = {}) {
        return WriteBytes(state.SettingsFile,
                          "[Einstellungen]\r\n" + general + "\r\n[Picture]\r\n" + picture + "\r\n");
    }

    std::unique_ptr<QTemporaryDir> folder;
    TestClock clock;
    Waiting waiting{clock};
    AnsweringBoxes boxes;
    QStringList calls;
    PictureState state;
    std::unique_ptr<ScriptedCapture> capture;
    std::unique_ptr<ScriptedOverlays> overlays;
    std::unique_ptr<PicturePipeline> pipeline;
};

QTEST_GUILESS_MAIN(TestPicturePipeline)
#include "test_picture_pipeline.moc"
