#include "base/status_hub.h"
#include "support/data_rows.h"
#include "texts/texts.h"
#include "ui/status/frm_status.h"
#include "ui/status/glyph_button.h"
#include "ui/status/picture_bar.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"
#include "ui/window_fixture.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

namespace {

// What a skin needs for the status window, in plain colours: 500 x 360 pixels with corners cut
// away, tracks of 224 pixels, handles of 24.
void MakeStatusSkin(const QString& folder) {
    QImage background(500, 360, QImage::Format_RGB32);
    background.fill(Qt::magenta);
    QPainter(&background).fillRect(10, 10, 480, 340, Qt::darkGreen);
    background.save(folder + "/StatusBg.bmp");
    for (const char* name : {"Slider1BG", "Slider2BG", "progress_bg", "progress_bg2"})
        SkinMaker::Picture(folder + "/" + QString::fromLatin1(name) + ".jpg", {224, 24}, Qt::gray);
    for (const char* name : {"Anfasser", "Anfasserhell"})
        SkinMaker::Picture(folder + "/" + QString::fromLatin1(name) + ".jpg", {24, 24}, Qt::white);
}

// The program with its status window, dressed in the skin "Green".
class StatusFixture : public WindowFixture {
  public:
    StatusFixture() { MakeStatusSkin(Skin("Green")); }
    ~StatusFixture() { Status.reset(); }

    frmStatus& Open() {
        Start();
        Status = std::make_unique<frmStatus>(*Core, Skins, Words);
        Status->Show();
        return *Status;
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
    hub.ShowUpload(42);
    hub.ShowPictureCount("Pic: 312");
    hub.ShowMegabytes("MB: 12.34");
}

}  // namespace

class TestStatusWindow : public QObject {
    Q_OBJECT

  private slots:
    void TheSkinSetsColoursAndTexts() {
        StatusFixture program;
        SkinMaker::Layout(program.Skin("Green"), "Label_Treiber", "ForeColor", "16711680");
        frmStatus& window = program.Open();
        QCOMPARE(window.Label5->palette().color(QPalette::WindowText), QColor(255, 0, 0));
        QCOMPARE(window.Label1->palette().color(QPalette::WindowText), QColor(0, 0, 255));
        window.ProgressBar1->setValue(42);
        QCOMPARE(window.ProgressBar1->text(), "Up 42 percent");
    }

    void QualityIsWritten() {
        StatusFixture program;
        program.Set("Einstellungen", "JPGQuality", "95");
        frmStatus& window = program.Open();
        // Beyond what the slider offers: shown as it is, the handle at the end.
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 95 %");
        Drag(*window.Slider1, 112, false);
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 50 %");
        QCOMPARE(program.Einstellung("JPGQuality"), "95");
        program.Core->LoadSettings();
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 50 %");
        Drag(*window.Slider1, 130);
        QCOMPARE(program.Einstellung("JPGQuality"), "55");
        QCOMPARE(program.Einstellung("Quali"), "1");
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
    }

    void Steps_data() {
        const Rows<bool, int, int, int> row;
        row("quality", false, 50, int(Qt::Key_Up), 51);
        row("down from a second", true, 1000, int(Qt::Key_Down), 900);
        row("an odd value first becomes even", true, 12'340, int(Qt::Key_Up), 15'000);
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
        QCOMPARE(window.Label4->text(), "stopped");
        StatusHub& hub = program.Core->Display;
        QVERIFY(window.Outline().contains(window.btnClose->geometry()));
        QCOMPARE(window.childAt(window.btnClose->geometry().center()), window.btnClose);
        QTest::mouseClick(window.btnClose, Qt::LeftButton);
        QVERIFY(!program.Core->State.StatusShown && !window.InUse());
        ShowAllOf(hub);
        program.Set("Einstellungen", "JPGQuality", "33");
        program.Core->LoadSettings();
        program.Time.Advance(3'000);
        QCOMPARE(window.Label7->text(), "Pic: 0");
        // Shown again it is up to date; the next second brings the time-out.
        window.Show();
        QCOMPARE(window.Label4->text(), "Send File");
        QCOMPARE(window.Label7->text(), "Pic: 312");
        QCOMPARE(window.ProgressBar1->value(), 42);
        QCOMPARE(window.lblJPG->text(), "JPG - Quality: 33 %");
        QCOMPARE(window.lblTime->text(), "00:00:03");
        ShowAllOf(hub);
        QCOMPARE(window.Label9->text(), "Time Out: 7 s");
        QVERIFY(window.Label9->isVisible() && window.Gauge->isVisible());
    }
};

QTEST_MAIN(TestStatusWindow)
#include "test_status_window.moc"
