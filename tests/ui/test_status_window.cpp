#include "base/status_hub.h"
#include "support/data_rows.h"
#include "ui/skin/skin.h"
#include "ui/status/frm_status.h"
#include "ui/status/picture_bar.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"
#include "ui/status/status_texts.h"
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

}  // namespace

class TestStatusWindow : public QObject {
    Q_OBJECT

  private slots:
    void LayoutRules_data() {
        const Rows<QString, QString, QPoint, QString, bool> row;
        const QString usual = "Upload - State: 42 %";
        row("no own bar", "Other", "0", QPoint(218, 50), usual, false);
        row("the skin with a rule of its own", "silver 1024", "0", QPoint(311, 54), usual, false);
        row("its keys override the rule", "silver 1024", "1", QPoint(300, 100), "Up 42 percent",
            true);
    }

    void LayoutRules() {
        const auto [skin, picture, timeOut, bar, ownColour] =
            Row<QString, QString, QPoint, QString, bool>();
        StatusFixture program;
        SkinMaker::Make(program.Skin(skin), Qt::red);
        MakeStatusSkin(program.Skin(skin), Qt::red);
        SkinMaker::Layout(program.Skin(skin), "Prog_Bar", "picture", picture);
        SkinMaker::Layout(program.Skin(skin), "Label_Treiber", "ForeColor", "16711680");
        frmStatus& window = program.Open();
        program.Dress(skin);
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
    }

    // Without any picture the window can be read and used.
    void SkinsThatAreGone() {
        StatusFixture program;
        QDir(program.Folder.filePath("Skins")).removeRecursively();
        frmStatus& window = program.Open();
        ShowAllOf(program.Core->Display);
        QVERIFY(window.isVisible() && !window.HasBackground());
        QVERIFY(!window.Label4->Cut() && window.Label4->width() > 100);
        Drag(*window.Slider1, window.Slider1->width() / 2.);
        QCOMPARE(program.Einstellung("JPGQuality"), "50");
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
    }

    void IntervalsAreWritten() {
        StatusFixture program;
        program.Set("Einstellungen", "Framerate", "20000");
        frmStatus& window = program.Open();
        QCOMPARE(window.lblUpload->text(), "1 Pic. / 20.0 s");
        Drag(*window.Slider2, 92, false);
        QCOMPARE(window.Label6->text(), "Upload: 1 Pic. / 120.0 seconds");
        QCOMPARE(program.Einstellung("Framerate"), "20000");
        Drag(*window.Slider2, 92);
        QCOMPARE(window.Label6->text(), "Upload");
        QCOMPARE(window.lblUpload->text(), "1 Pic. / 120.0 s");
        QCOMPARE(program.Einstellung("Framerate"), "60000");
        QCOMPARE(program.Einstellung("Uptime"), "1");
        QCOMPARE(program.Core->State.Values.TotalInterval(), 120'000);
        // The intervals that operators want have a pixel of their own on the track.
        QSet<int> hit;
        for (int x = 12; x <= 212; ++x) {
            Drag(*window.Slider2, x, false);
            hit << window.Slider2->value();
        }
        for (const int wanted : {100, 1000, 5000, 10'000, 30'000, 60'000, 120'000, 300'000})
            QVERIFY2(hit.contains(wanted), qPrintable(QString::number(wanted)));
    }

    void Steps_data() {
        const Rows<bool, int, int, int> row;
        row("quality", false, 50, int(Qt::Key_Up), 51);
        row("tenths below a second", true, 900, int(Qt::Key_Right), 1000);
        row("down from a second", true, 1000, int(Qt::Key_Down), 900);
        row("an odd value first becomes even", true, 12'340, int(Qt::Key_Up), 15'000);
        row("page down to the end", true, 5000, int(Qt::Key_PageDown), 100);
        row("end", true, 5000, int(Qt::Key_End), 300'000);
    }

    void Steps() {
        const auto [interval, from, key, to] = Row<bool, int, int, int>();
        PictureSlider slider(interval ? IntervalValues : QualityValues, nullptr);
        slider.SetValue(from);
        const QSignalSpy chosen(&slider, &PictureSlider::Chosen);
        // A key held down offers a value each time it repeats and chooses once.
        QTest::keyPress(&slider, Qt::Key(key));
        QCOMPARE(slider.value(), to);
        QVERIFY(slider.Choosing() && chosen.isEmpty());
        QTest::keyRelease(&slider, Qt::Key(key));
        QCOMPARE(chosen.size(), 1);
    }

    // Neither beside the handle nor with the right button nor beyond the end, and a mere click
    // leaves a value beyond the range as it is.
    void NotDragged() {
        StatusFixture program;
        program.Set("Einstellungen", "JPGQuality", "95");
        frmStatus& window = program.Open();
        PictureSlider& slider = *window.Slider1;
        const QPoint centre = slider.Handle().center();
        const QSignalSpy chosen(&slider, &PictureSlider::Chosen);
        QTest::mouseClick(&slider, Qt::LeftButton, {}, {60, 12});
        QTest::mouseClick(&slider, Qt::LeftButton, {}, centre);
        QTest::mousePress(&slider, Qt::RightButton, {}, centre);
        QTest::mouseMove(&slider, {112, 12});
        QTest::mouseRelease(&slider, Qt::RightButton, {}, {112, 12});
        QVERIFY(chosen.isEmpty() && !slider.Choosing());
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 95 %");
        Drag(slider, 112);
        Drag(slider, 300);
        QCOMPARE(slider.value(), 50);
    }

    void Texts() {
        QCOMPARE(StatusTexts::Interval(1250), "1 Pic. / 1.3 s");
        QCOMPARE(StatusTexts::Interval(9950), "1 Pic. / 10.0 s");
        QCOMPARE(StatusTexts::Overlay(9), "No Overlay");
        QCOMPARE(StatusTexts::RunningTime(4'320'059'000), "1200:00:59");
    }

    void LongTextsAreCut() {
        ReadoutLabel label(nullptr);
        const QString words = "A line that tells at some length what the program is doing now";
        label.setText(words);
        label.resize(150, 20);
        QVERIFY(label.Cut() && label.Lines()[0].startsWith("A line"));
        label.setWordWrap(true);
        label.resize(80, 3 * label.fontMetrics().lineSpacing());
        QCOMPARE(label.Lines().size(), 3);
        for (const QString& line : label.Lines())
            QVERIFY(label.fontMetrics().horizontalAdvance(line) <= label.width());
        label.resize(80, 300);
        QCOMPARE(label.Lines().join(u' '), words);
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
        frmStatus& window = program.Open();
        StatusHub& hub = program.Core->Display;
        window.hide();
        QVERIFY(!program.Core->State.StatusShown && !window.InUse());
        program.Time.Advance(5'000);
        hub.ResetRunningTime();
        ShowAllOf(hub);
        program.Set("Einstellungen", "JPGQuality", "33");
        program.Core->LoadSettings();
        program.Time.Advance(3'000);
        QCOMPARE(window.Label7->text(), "Pic: 0");
        QCOMPARE(window.lblTime->text(), "00:00:00");
        QVERIFY(window.Label9->isHidden());
        // Shown again it is up to date; the next second brings the time-out.
        window.Show();
        QCOMPARE(window.Label4->text(), "Send File");
        QCOMPARE(window.Label7->text(), "Pic: 312");
        QCOMPARE(window.ProgressBar1->value(), 42);
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 33 %");
        QCOMPARE(window.lblTime->text(), "00:00:03");
        program.Time.Advance(2'000);
        QCOMPARE(window.lblTime->text(), "00:00:05");
        QVERIFY(window.Label9->isHidden());
        ShowAllOf(hub);
        QCOMPARE(window.Label9->text(), "Time Out: 7 s");
        QVERIFY(window.Label9->isVisible() && window.Gauge->isVisible());
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
    }
};

QTEST_MAIN(TestStatusWindow)
#include "test_status_window.moc"
