#include "base/profile_file.h"
#include "support/data_rows.h"
#include "ui/skin/skin.h"
#include "ui/status/frm_status.h"
#include "ui/status/picture_bar.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"
#include "ui/texts/texts.h"
#include "ui/window_fixture.h"

#include <QDir>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

namespace {

// What a skin needs for the status window, in plain colours: 500 x 360 pixels with corners cut
// away, tracks of 224 pixels, handles of 24.
void MakeStatusSkin(const QString& folder, const QColor& colour) {
    QImage background(500, 360, QImage::Format_RGB32);
    background.fill(Qt::magenta);
    QPainter(&background).fillRect(10, 10, 480, 340, colour);
    background.save(folder + "/StatusBg.bmp");
    for (const char* name : {"Slider1BG", "Slider2BG"})
        SkinMaker::Picture(folder + "/" + QString::fromLatin1(name) + ".jpg", {224, 24}, Qt::gray);
    SkinMaker::Picture(folder + "/Anfasser.jpg", {24, 24}, Qt::white);
    SkinMaker::Picture(folder + "/Anfasserhell.jpg", {24, 24}, Qt::yellow);
    SkinMaker::Picture(folder + "/progress_bg.jpg", {400, 18}, Qt::black);
    SkinMaker::Picture(folder + "/progress_bg2.jpg", {400, 18}, colour.lighter());
    QFile layout(folder + "/Position.ini");
    if (layout.open(QIODevice::Append))
        layout.write(
            "[Slider1]\nTop=4200\nLeft=300\n[Slider2]\nTop=4800\nLeft=300\n"
            "[Beschriftung]\nVisible=1\n[Beschriftung_Color]\nForeColor=255\n"
            "[Label_Treiber]\nTop=300\nLeft=300\nWidth=3000\nForeColor=65280\n"
            "[Label_Rec]\nTop=300\nLeft=3600\n[Label_Online]\nTop=300\nLeft=4500\n"
            "[Label_Status]\nTop=750\nLeft=300\n[Label_TimeOut]\nTop=1500\nLeft=4500\n"
            "[Label_Pic]\nTop=1500\nLeft=2700\n[Label_MB]\nTop=1800\nLeft=2700\n"
            "[Label_Aufloesung]\nTop=1500\nLeft=300\n[Label_JPG]\nTop=1800\nLeft=300\n"
            "[Label_Mouse]\nTop=2550\nLeft=300\n[Label_Overlay]\nTop=2100\nLeft=2700\n"
            "[Label_Time]\nTop=2100\nLeft=4500\n[Label_Upload]\nTop=2100\nLeft=300\n"
            "[Prog_Bar]\nTop=3300\nLeft=300\npicture=1\nCaption=1\n"
            "TextBefore=\"Up \"\nTextAfter=\" percent\"\n"
            "[Anfasser1]\nTop=4200\n[Anfasser2]\nTop=4800\n");
}

// The program with its status window, dressed in the skin "Green".
class StatusFixture : public WindowFixture {
  public:
    StatusFixture() {
        MakeStatusSkin(Skin("Default"), Qt::blue);
        MakeStatusSkin(Skin("Green"), QColor(0, 100, 0));
    }
    ~StatusFixture() { Status.reset(); }

    frmStatus& Open() {
        Start();
        Status = std::make_unique<frmStatus>(*Core, Skins, Words);
        Status->Show();
        return *Status;
    }
    void Dress(const QString& name) {
        class Skin skin(Skins, name);
        Status->LoadBackground(skin);
        Status->ApplyLayout(skin);
    }
    [[nodiscard]] QString Einstellung(const QString& key) const {
        return Setting("Einstellungen", key);
    }

    Texts Words{Texts::Language::English};
    std::unique_ptr<frmStatus> Status;
};

// Drags the handle of a slider so that its centre comes to x.
void Drag(PictureSlider& slider, double x, bool release = true) {
    const auto send = [&](QEvent::Type type, const QPointF& at, Qt::MouseButton button) {
        const bool up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, slider.mapToGlobal(at), button,
                          up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&slider, &event);
    };
    const double y = slider.Handle().center().y();
    send(QEvent::MouseButtonPress, slider.Handle().center(), Qt::LeftButton);
    send(QEvent::MouseMove, {x, y}, Qt::NoButton);
    if (release) send(QEvent::MouseButtonRelease, {x, y}, Qt::LeftButton);
}

// Counts what is painted in a window and its controls.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& window) {
        window.installEventFilter(this);
        for (QWidget* control : window.findChildren<QWidget*>()) control->installEventFilter(this);
    }
    int Count = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++Count;
        return false;
    }
};

void ShowAllOf(StatusHub& hub) {
    hub.ShowStatus("Send File");
    hub.ShowTimeOutLabel(7);
    hub.ShowTimeOutGauge(7);
    hub.ShowOnline(true);
    hub.ShowRecording("Rec.");
    hub.ShowUpload(42);
    hub.ShowPictureCount("Pic: 312");
    hub.ShowMegabytes("MB: 12.34");
}

QColor TextColour(const QWidget& label) {
    return label.palette().color(QPalette::WindowText);
}

// The controls that stand on one another, by their texts and names.
QStringList Overlapping(const frmStatus& window) {
    QStringList wrong;
    const auto controls = window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* one : controls)
        for (const QWidget* other : controls)
            if (one < other && one->geometry().intersects(other->geometry()))
                wrong << one->objectName() + " on " + other->objectName();
    return wrong;
}

}  // namespace

class TestStatusWindow : public QObject {
    Q_OBJECT

  private slots:
    void LayoutRules_data() {
        const Rows<QString, QString, QPoint, QString, bool> row;
        const QString usual = "Upload - State: 42 %";
        row("own bar", "Other", "1", QPoint(300, 100), "Up 42 percent", true);
        row("no own bar", "Other", "0", QPoint(218, 50), usual, false);
        row("the skin with a rule of its own", "silver 1024", "0", QPoint(311, 54), usual, false);
        row("its keys override the rule", "silver 1024", "1", QPoint(300, 100), "Up 42 percent",
            true);
    }

    void LayoutRules() {
        const auto [skin, picture, timeOut, bar, ownColour] =
            Row<QString, QString, QPoint, QString, bool>();
        StatusFixture program;
        QDir().mkpath(program.Skin(skin));
        MakeStatusSkin(program.Skin(skin), Qt::red);
        SkinMaker::Layout(program.Skin(skin), "Prog_Bar", "picture", picture);
        SkinMaker::Layout(program.Skin(skin), "Label_Treiber", "ForeColor", "16711680");
        frmStatus& window = program.Open();
        QVERIFY(!window.mask().contains(QPoint(1, 1)) && window.mask().contains(QPoint(20, 20)));
        program.Dress(skin);
        QCOMPARE(window.Slider1->geometry(), QRect(20, 280, 224, 24));
        QCOMPARE(TextColour(*window.Label5), QColor(255, 0, 0));
        // A label reaches to its neighbour.
        QCOMPARE(window.lblJPG->geometry().right() + 1, 180 - 8);
        QCOMPARE(window.Label9->pos(), timeOut);
        QCOMPARE(window.Gauge->pos(), timeOut + QPoint(0, 20));
        window.ProgressBar1->setValue(42);
        QCOMPARE(window.ProgressBar1->text(), bar);
        // Without the key the colour stays that of the skin before.
        QCOMPARE(TextColour(*window.Label1), ownColour ? QColor(0, 0, 255) : QColor(0, 255, 0));
        // The bar's pictures come from the skin, or from the default one.
        const QColor fill = ownColour ? QColor(Qt::red) : QColor(Qt::blue);
        const QImage drawn = window.ProgressBar1->grab().toImage();
        QVERIFY(Alike(drawn.pixelColor(20, 3), fill.lighter()));
        QVERIFY(Alike(drawn.pixelColor(380, 3), Qt::black));
    }

    void DamagedSkins_data() {
        const Rows<QStringList, bool> row;
        row("every slider picture",
            QStringList{"Green/Anfasser.jpg", "Green/Slider1BG.jpg", "Green/StatusBg.bmp",
                        "Default/Anfasser.jpg", "Default/Slider1BG.jpg", "Green/progress_bg.jpg",
                        "Default/progress_bg.jpg"},
            false);
        row("everything", QStringList{"Green", "Default"}, true);
    }

    // The window can be read and used, and is whole again in another skin.
    void DamagedSkins() {
        const auto [removed, plain] = Row<QStringList, bool>();
        StatusFixture program;
        for (const QString& name : removed) {
            const QString path = program.Folder.filePath("Skins/" + name);
            QVERIFY(QFile::remove(path) || QDir(path).removeRecursively());
        }
        frmStatus& window = program.Open();
        ShowAllOf(program.Core->Display);
        QCoreApplication::processEvents();
        QVERIFY(window.isVisible());
        QCOMPARE(window.HasBackground(), !plain);
        if (plain) QCOMPARE(Overlapping(window), QStringList());
        QVERIFY(!window.Label4->Cut() && window.Label4->width() > 100);
        Drag(*window.Slider1, window.Slider1->width() / 2.);
        QCOMPARE(program.Einstellung("JPGQuality"), "50");
        QDir().mkpath(program.Skin("Whole"));
        MakeStatusSkin(program.Skin("Whole"), Qt::red);
        program.Dress("Whole");
        QCoreApplication::processEvents();
        QCOMPARE(window.Label1->geometry(), QRect(20, 20, 200, 20));
        QCOMPARE(window.size(), QSize(500, 360));
    }

    void QualityIsWritten() {
        StatusFixture program;
        program.Set("Einstellungen", "JPGQuality", "95");
        frmStatus& window = program.Open();
        // Beyond what the slider offers: shown as it is, the handle at the end.
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 95 %");
        QCOMPARE(window.Slider1->Handle().left(), 200);
        Drag(*window.Slider1, 112, false);
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 50 %");
        QCOMPARE(program.Einstellung("JPGQuality"), "95");
        program.Core->LoadSettings();
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 50 %");
        Drag(*window.Slider1, 130);
        QCOMPARE(program.Einstellung("JPGQuality"), "55");
        QCOMPARE(program.Core->State.Values.JPGQuality, 55);
        program.Core->LoadSettings();
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 55 %");
    }

    void IntervalsAreWritten_data() {
        const Rows<double, QString, QString, QString> row;
        row("shortest", 12., "0.1", "100", "0");
        row("two minutes", 92., "120.0", "60000", "1");
        row("longest", 212., "300.0", "60000", "4");
    }

    void IntervalsAreWritten() {
        const auto [x, text, framerate, uptime] = Row<double, QString, QString, QString>();
        StatusFixture program;
        program.Set("Einstellungen", "Framerate", "20000");
        frmStatus& window = program.Open();
        QCOMPARE(window.lblUpload->text(), "1 Pic. / 20.0 s");
        Drag(*window.Slider2, x, false);
        QCOMPARE(window.Label6->text(), "Upload: 1 Pic. / " + text + " seconds");
        QCOMPARE(program.Einstellung("Framerate"), "20000");
        Drag(*window.Slider2, x);
        QCOMPARE(window.Label6->text(), "Upload");
        QCOMPARE(window.lblUpload->text(), "1 Pic. / " + text + " s");
        QCOMPARE(program.Einstellung("Framerate"), framerate);
        QCOMPARE(program.Einstellung("Uptime"), uptime);
        QCOMPARE(program.Core->State.Values.TotalInterval(),
                 framerate.toInt() + 60'000 * uptime.toInt());
        window.RefreshStatus();
        QCOMPARE(window.lblUpload->text(), "1 Pic. / " + text + " s");
    }

    // Choosing a quality while pictures are made does not put the next one off.
    void TheRunKeepsItsRhythm() {
        StatusFixture program;
        program.Set("Cameras", "Cam0", "Gate|test:64x48");
        program.Set("Einstellungen", "Treiber", "Gate");
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Set("Einstellungen", "Framerate", "20000");
        frmStatus& window = program.Open();
        Program& core = *program.Core;
        QCOMPARE(window.Label1->text(), "Gate");
        QCOMPARE(window.lblAufloesung->text(), "");
        core.Start();
        program.Time.Advance(15'000);
        Drag(*window.Slider1, 112);
        program.Time.Advance(4'000);
        QCOMPARE(core.Cycle.PictureCount(), 0);
        program.Time.Advance(2'000);
        QCOMPARE(core.Cycle.PictureCount(), 1);
        QCOMPARE(window.Label7->text(), "Pic: 1");
        QCOMPARE(window.lblAufloesung->text(), "Format: 64 x 48");
        QCOMPARE(window.lblTime->text(), "00:00:21");
        // A new interval counts at once.
        Drag(*window.Slider2, 13);
        program.Time.Advance(3'500);
        QVERIFY(core.Cycle.PictureCount() > 1);
        core.Cycle.Stop();
    }

    void HiddenItIsLeftAlone() {
        StatusFixture program;
        program.Set("Einstellungen", "Treiber", "Gate");
        program.Set("Einstellungen", "Overlay", "3");
        frmStatus& window = program.Open();
        StatusHub& hub = program.Core->Display;
        QCOMPARE(window.lblOverlay->text(), "special Text");
        hub.ShowOnline(false);
        window.hide();
        QVERIFY(!program.Core->State.StatusShown && !window.InUse());
        QCoreApplication::processEvents();
        const PaintCounter painted(window);
        program.Time.Advance(5'000);
        hub.ResetRunningTime();
        ShowAllOf(hub);
        window.ShowHelp("help");
        program.Set("Einstellungen", "JPGQuality", "33");
        program.Core->LoadSettings();
        program.Time.Advance(3'000);
        QCOMPARE(painted.Count, 0);
        QCOMPARE(window.Label1->text(), "No Video Capture Device!");
        QCOMPARE(window.Label7->text(), "Pic: 0");
        QCOMPARE(window.Label4->text(), "Offline");
        QCOMPARE(window.lblTime->text(), "00:00:00");
        QVERIFY(window.lblmouseover->text().isEmpty() && window.Label9->isHidden());
        // Shown again it is up to date; the next second brings the time-out.
        window.Show();
        QVERIFY(program.Core->State.StatusShown);
        QCOMPARE(window.Label4->text(), "Send File");
        QCOMPARE(window.Label7->text(), "Pic: 312");
        QVERIFY(window.Label3->isVisible());
        QCOMPARE(window.ProgressBar1->value(), 42);
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 33 %");
        QCOMPARE(window.lblTime->text(), "00:00:03");
        program.Time.Advance(2'000);
        QCOMPARE(window.lblTime->text(), "00:00:05");
        QVERIFY(window.Label9->isHidden());
        ShowAllOf(hub);
        QCOMPARE(window.Label9->text(), "Time Out: 7 s");
        QVERIFY(window.Label9->isVisible() && window.Gauge->isVisible());
        QCOMPARE(window.Gauge->value(), 7);
        hub.ShowTimeOutLabel({});
        hub.ShowTimeOutGauge({});
        QVERIFY(window.Label9->isHidden() && window.Gauge->isHidden());
    }

    void HelpForWhatIsUnderTheMouse() {
        StatusFixture program;
        frmStatus& window = program.Open();
        const auto send = [](QWidget* control, QEvent::Type type) {
            QEvent event(type);
            QCoreApplication::sendEvent(control, &event);
        };
        // Every control has a text of its own.
        QSet<QString> helps;
        for (QWidget* control : window.findChildren<QWidget*>()) {
            send(control, QEvent::Enter);
            helps << window.lblmouseover->text();
            QVERIFY(!window.lblmouseover->text().startsWith(u'?'));
            send(control, QEvent::Leave);
            QCOMPARE(window.lblmouseover->text(), "");
        }
        QCOMPARE(helps.size(), 17);  // the captions have those of their sliders
        send(window.Slider2, QEvent::Enter);
        const QString english = window.lblmouseover->text();
        program.Words.SetLanguage(Texts::Language::German);
        QVERIFY(window.lblmouseover->text() != english);
        QVERIFY(helps.contains(english));
        window.ShowHelp("Start publishing pictures");
        program.Words.SetLanguage(Texts::Language::French);
        QCOMPARE(window.lblmouseover->text(), "Start publishing pictures");
    }

    void EscapeHidesAndThePlaceIsKept() {
        StatusFixture program;
        frmStatus& window = program.Open();
        const QSignalSpy closed(&window, &frmStatus::Closed);
        window.move(60, 40);
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(window.isHidden() && !program.Core->State.StatusShown);
        QCOMPARE(closed.size(), 1);
        QCOMPARE(program.Setting("Window", "StatusLeft"), "60");
        QCOMPARE(program.Setting("Window", "StatusTop"), "40");
        program.Set("Window", "StatusLeft", "9000");
        window.Show();
        QVERIFY(window.screen()->geometry().contains(window.geometry()));
        QCOMPARE(window.y(), 40);
        window.actions().first()->trigger();  // of the mouse
        QVERIFY(window.isHidden());
    }
};

QTEST_MAIN(TestStatusWindow)
#include "test_status_window.moc"
