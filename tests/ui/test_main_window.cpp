#include "support/data_rows.h"
#include "ui/skin/picture_box.h"
#include "ui/skin/picture_button.h"
#include "ui/widgets/preview_area.h"
#include "ui/window_fixture.h"

#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

namespace {

// What JPEG pictures of these colours show.
const QColor green(0, 160, 0);
const QColor lightGreen = green.lighter();

void MoveMouse(QWidget& over, const QPoint& to) {
    QMouseEvent event(QEvent::MouseMove, QPointF(to), over.mapToGlobal(QPointF(to)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&over, &event);
}

}  // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

  private slots:
    void DressedInTheSkinOfTheSettings() {
        WindowFixture program;
        program.Start();
        frmSkin& window = *program.Window;
        QVERIFY(window.isVisible() && window.LayoutComplete());
        QCOMPARE(program.Core->State.SkinName, "Green");
        QCOMPARE(program.Boxes.Shown, QStringList());
        QCOMPARE(window.size(), QSize(400, 320));
        QVERIFY(!window.mask().contains(QPoint(1, 1)) && window.mask().contains(QPoint(200, 1)));
        QCOMPARE(window.preview->geometry(), QRect(40, 10, 316, 235));
        QCOMPARE(window.btnStart->geometry(), QRect(40, 290, 40, 20));
        QCOMPARE(window.Label_Driver->pos(), QPoint(20, 245));
        // What is cut away does not shine through where the window is drawn larger.
        int x = 0;
        while (!window.mask().contains(QPoint(x, 0))) ++x;
        QVERIFY(window.grab().toImage().pixelColor(x - 1, 0) != QColor(Qt::magenta));
    }

    void DriverTexts_data() {
        const Rows<QString, QString, QColor> row;
        row("a camera", "Gate", "Gate", QColor(0, 0, 255));
        row("none", "", "No Video Capture Device!", QColor(255, 0, 0));
    }

    void DriverTexts() {
        const auto [camera, text, colour] = Row<QString, QString, QColor>();
        WindowFixture program;
        program.Set("Einstellungen", "Treiber", camera);
        if (!camera.isEmpty()) program.Set("Cameras", "Cam0", camera + "|test:64x48");
        program.Start();
        const frmSkin& window = *program.Window;
        QCOMPARE(window.Label_Driver->text(), text);
        QCOMPARE(window.cbDriver->currentText(), text);
        QCOMPARE(window.Label_Driver->palette().color(QPalette::WindowText), colour);
        QCOMPARE(window.cbDriver->isEnabled(), !camera.isEmpty());
    }

    void ACameraThatComesLaterIsTaken() {
        WindowFixture program;
        program.Set("Einstellungen", "Treiber", "Garden");
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Start();
        program.Core->Start();
        program.System.Cameras.Devices = {{"Other", {}, {}, {}}};
        program.Time.Advance(10'000);
        QCOMPARE(program.Core->DriverIndex(), -1);
        program.System.Cameras.Devices << CaptureDevice{"Garden", {}, {}, {}};
        program.Time.Advance(10'000);
        QCOMPARE(program.Window->Label_Driver->text(), "Garden");
        QVERIFY(program.Core->PictureValues.CameraRunning);
    }

    // A skin with a broken file: told once, and the control has what the default skin has.
    void BrokenPictures_data() {
        const Rows<QString, QByteArray> row;
        const QByteArrayList damages{{}, "", "BM\xFF\xD8\x01\x02 no picture"};
        int next = 0;
        for (const QString& file : SkinMaker::Pictures())
            row(qPrintable(file), file, damages[next++ % damages.size()]);
        QBuffer small;
        QImage(63, 200, QImage::Format_RGB32).save(&small, "BMP");
        row("a background without room for a window", "splash.bmp", small.data());
    }

    void BrokenPictures() {
        const auto [file, content] = Row<QString, QByteArray>();
        WindowFixture program;
        QFile::remove(program.Skin("Green", file));
        if (!content.isNull()) SkinMaker::Write(program.Skin("Green", file), content);
        program.Start();
        QCOMPARE(program.Boxes.Shown.size(), 1);
        QVERIFY(program.Boxes.Shown[0].contains("Error: " + file + " (Green)"));
        frmSkin& window = *program.Window;
        QVERIFY(window.isVisible());
        const QColor background = window.grab().toImage().pixelColor(10, 160);
        const QColor ground = file == "splash.bmp" ? QColor(Qt::blue) : green;
        QVERIFY(Alike(background, ground.darker()));
        const QColor start = file == "button_go.jpg" ? QColor(Qt::blue) : green;
        QVERIFY(Alike(MiddleColour(*window.btnStart), start));
        const QColor flap = file == "Splash_Klappe.jpg" ? QColor(Qt::blue) : green;
        QVERIFY(Alike(MiddleColour(*window.pic_klappe), flap));
    }

    void WithoutAnySkin() {
        WindowFixture program;
        QDir(program.Skin("Green")).removeRecursively();
        QDir(program.Skin("Default")).removeRecursively();
        program.Start();
        QCOMPARE(program.Boxes.Shown.size(), 1);
        QVERIFY(program.Boxes.Shown[0].contains("button_go.jpg (Default)"));
        QVERIFY(program.Boxes.Shown[0].contains("splash.bmp"));
        QCOMPARE(program.Core->State.SkinName, "Default");
        QCOMPARE(program.Setting("Einstellungen", "Skin"), "Green");
        frmSkin& window = *program.Window;
        QVERIFY(window.isVisible());
        QRegion taken;
        for (PictureButton* button : {window.btnStart, window.btnPause, window.btnStop,
                                      window.btnOptions, window.btnMin, window.btnExit}) {
            QVERIFY(button->isVisible() && window.rect().contains(button->geometry()));
            QVERIFY(!taken.intersects(button->geometry()));
            taken += button->geometry();
            QVERIFY(button->width() > button->fontMetrics().horizontalAdvance(button->text()));
        }
        const QSignalSpy ended(program.Core.get(), &Program::Ended);
        QTest::mouseClick(window.btnExit, Qt::LeftButton);
        QCOMPARE(ended.size(), 1);
    }

    void HoverPicture_data() {
        const Rows<QPoint, bool> row;
        row("top left corner", QPoint(0, 0), true);
        row("a pixel behind both edges", QPoint(40, 20), true);
        row("behind the right edge", QPoint(41, 5), false);
        row("below the lower edge", QPoint(5, 21), false);
        row("left of it", QPoint(-1, 5), false);
    }

    void HoverPicture() {
        const auto [mouse, inside] = Row<QPoint, bool>();
        WindowFixture program;
        program.Start();
        PictureButton& button = *program.Window->btnStart;
        MoveMouse(button, {20, 10});
        QVERIFY(Alike(MiddleColour(button), lightGreen));
        MoveMouse(button, mouse);
        QVERIFY(Alike(MiddleColour(button), inside ? lightGreen : green));
        MoveMouse(button, {20, 10});
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&button, &leave);
        QVERIFY(Alike(MiddleColour(button), green));
        MoveMouse(button, {20, 10});
        button.setEnabled(false);
        const QColor dimmed = MiddleColour(button);
        QVERIFY(!Alike(dimmed, green) && !Alike(dimmed, lightGreen));
    }

    void Keyboard() {
        WindowFixture program;
        program.Set("Cameras", "Cam0", "Gate|test:64x48");
        program.Start();
        frmSkin& window = *program.Window;
        window.activateWindow();
        window.btnPause->setEnabled(true);
        window.btnStop->setEnabled(true);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(window.focusWidget(), &window);
        const QImage still = window.btnStart->grab().toImage();
        QList<QWidget*> order{window.btnStart,        window.btnPause, window.btnStop,
                              window.btnOptions,      window.btnMin,   window.btnExit,
                              window.pic_klappe_open, window.cbDriver};
        for (QWidget* expected : order) {
            QTest::keyClick(&window, Qt::Key_Tab);
            QCOMPARE(window.focusWidget(), expected);
            if (expected == window.btnStart)
                QVERIFY2(window.btnStart->grab().toImage() != still, "no focus ring");
        }
        for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            const QSignalSpy clicks(window.pic_klappe_open, &PictureButton::clicked);
            QTest::keyClick(window.pic_klappe_open, static_cast<Qt::Key>(key));
            QCOMPARE(clicks.size(), 1);
        }
        const QSignalSpy overview(&window, &frmSkin::StatusOverviewWanted);
        QTest::keyClick(&window, Qt::Key_F11);
        QCOMPARE(overview.size(), 1);
    }

    void TheKeyboardFollowsTheButtonsThatAreOn() {
        WindowFixture program;
        program.Start();
        frmSkin& window = *program.Window;
        const auto focusIn = [&](RunState state) {
            program.Core->Run.Enter(state);
            return window.focusWidget();
        };
        window.btnStart->setFocus();
        QCOMPARE(focusIn(RunState::Connecting), &window);
        QCOMPARE(focusIn(RunState::Waiting), window.btnStop);
        QCOMPARE(focusIn(RunState::Stopped), window.btnStart);
        QCOMPARE(focusIn(RunState::Connecting), &window);
        window.btnOptions->setFocus();
        QCOMPARE(focusIn(RunState::Waiting), window.btnOptions);
    }

    void Flap() {
        WindowFixture program;
        program.Start();
        const frmSkin& window = *program.Window;
        for (QWidget* const seen : std::initializer_list<QWidget*>{
                 window.pic_klappe, window.preview, window.pic_klappe}) {
            QCOMPARE(window.childAt(100, 100), seen);
            QTest::mouseClick(window.pic_klappe_open, Qt::LeftButton);
        }
        SkinMaker::Layout(program.Skin("Green"), "pic_klappe", "Visible", "0");
        QFile::remove(program.Skin("Green", "Splash_Klappe.jpg"));
        program.Start();
        QCOMPARE(program.Boxes.Shown, QStringList());
        QCOMPARE(program.Window->preview->size(), QSize(320, 240));
        QVERIFY(!program.Window->pic_klappe_open->isVisible());
        QCOMPARE(program.Window->childAt(100, 100), program.Window->preview);
    }

    void LedsTellTheTruth() {
        WindowFixture program;
        program.Start();
        frmSkin& window = *program.Window;
        StatusDisplay& display = program.Core->Display;
        const auto lit = [](PictureBox& led) { return Alike(MiddleColour(led), lightGreen); };
        QVERIFY(!lit(*window.LEDLeft) && !lit(*window.LEDReigth));
        display.ShowOnline(true);
        QVERIFY(lit(*window.LEDLeft) && !lit(*window.LEDReigth));
        program.Core->Run.Enter(RunState::Sending);
        QVERIFY(lit(*window.LEDReigth));
        program.Core->Run.Enter(RunState::Paused);
        QVERIFY2(lit(*window.LEDReigth), "the picture on its way arrives");
        program.Core->Run.Enter(RunState::WaitingToRetry);
        QVERIFY(!lit(*window.LEDReigth));
        display.ShowOnline(false);
        QVERIFY(!lit(*window.LEDLeft));
    }

    void NothingOfTheStatusIsLost() {
        WindowFixture program;
        program.Start();
        const frmSkin& window = *program.Window;
        StatusDisplay& display = program.Core->Display;
        display.ShowStatus("Send File");
        display.ShowPictureCount("Pic: 7");
        display.ShowMegabytes("MB: 0.21");
        display.ShowTimeOutLabel(12);
        QCOMPARE(window.windowTitle(), "Stillpost - Send File");
        QCOMPARE(window.Label_Driver->toolTip(),
                 "Send File\nTime Out: 12 s\nPic: 7\nMB: 0.21\nOffline");
        QVERIFY2(!window.lblStatus->isVisible(), "it would lie on the buttons");
        display.ShowTimeOutLabel(std::nullopt);
        SkinMaker::Layout(program.Skin("Green"), "Label_Driver", "Top", "450");
        program.Start();
        QVERIFY2(!program.Window->lblStatus->isVisible(), "it would lie on the preview");
        SkinMaker::Layout(program.Skin("Green"), "ezVidCap1", "Top", "-3600");
        SkinMaker::Layout(program.Skin("Green"), "pic_klappe", "Visible", "0");
        program.Start();
        QLabel& line = *program.Window->lblStatus;
        QVERIFY(line.isVisible());
        program.Core->Display.ShowStatus(QString("long ").repeated(100));
        QVERIFY(line.fontMetrics().horizontalAdvance(line.text()) <= line.width());
        QVERIFY(line.text().startsWith("long long"));
    }

    void PlaceIsRemembered() {
        WindowFixture program;
        program.Start();
        frmSkin& window = *program.Window;
        window.move(150, 90);
        program.Time.Advance(500);
        window.move(160, 95);
        program.Time.Advance(900);
        QCOMPARE(program.Setting("Window", "WindowLeft"), QString());
        program.Time.Advance(200);
        QCOMPARE(program.Setting("Window", "WindowLeft"), "160");
        QCOMPARE(program.Setting("Window", "WindowTop"), "95");
        window.hide();
        window.move(5, 6);
        program.Core->Exit();
        QCOMPARE(program.Setting("Window", "WindowLeft"), "160");
        program.Start();
        QCOMPARE(program.Window->pos(), QPoint(160, 95));
        program.Window->move(30, 40);
        program.Core->Exit();
        QCOMPARE(program.Setting("Window", "WindowLeft"), "30");
        program.Set("Window", "WindowLeft", "-20000");
        program.Set("Window", "WindowTop", "99999999999");
        program.Start();
        QVERIFY(program.Window->screen()->geometry().contains(program.Window->geometry()));
    }

    // Where the window system does not move windows, the mouse does.
    void DraggedByItsBackground() {
        WindowFixture program;
        program.Start();
        frmSkin& window = *program.Window;
        window.move(100, 100);
        const auto send = [&window](QEvent::Type type, Qt::MouseButton button, const QPoint& at) {
            QMouseEvent event(type, window.mapFromGlobal(QPointF(at)), QPointF(at), button, button,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
        };
        send(QEvent::MouseButtonPress, Qt::RightButton, {110, 250});
        send(QEvent::MouseMove, Qt::RightButton, {140, 260});
        QCOMPARE(window.pos(), QPoint(100, 100));
        send(QEvent::MouseButtonPress, Qt::LeftButton, {110, 250});
        send(QEvent::MouseMove, Qt::LeftButton, {140, 260});
        QCOMPARE(window.pos(), QPoint(130, 110));
        send(QEvent::MouseButtonRelease, Qt::LeftButton, {140, 260});
        send(QEvent::MouseMove, Qt::NoButton, {200, 200});
        QCOMPARE(window.pos(), QPoint(130, 110));
    }

    void PreviewPlaces_data() {
        const Rows<bool, bool, QRect> row;
        row("in proportion", false, false, QRect(0, 0, 320, 180));
        row("centred", false, true, QRect(0, 30, 320, 180));
        row("stretched", true, true, QRect(0, 0, 320, 240));
    }

    void PreviewPlaces() {
        const auto [stretched, centred, expected] = Row<bool, bool, QRect>();
        QCOMPARE(PreviewArea::Place({1920, 1080}, {320, 240}, stretched, centred), expected);
    }
};

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
