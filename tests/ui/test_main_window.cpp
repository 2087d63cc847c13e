#include "base/status_hub.h"
#include "support/data_rows.h"
#include "ui/main/visitors_view.h"
#include "ui/skin/picture_box.h"
#include "ui/skin/picture_button.h"
#include "ui/status/glyph_button.h"
#include "ui/widgets/preview_area.h"
#include "ui/window_fixture.h"

#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace {

// What JPEG pictures of these colours show.
const QColor green(0, 160, 0);
const QColor lightGreen = green.lighter();

}  // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

  private slots:
    void ACameraThatComesLaterIsTaken() {
        WindowFixture program;
        program.Set("Einstellungen", "Treiber", "Garden");
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Start();
        const QLabel& driver = *program.Window->Label_Driver;
        const auto colour = [&] { return driver.palette().color(QPalette::WindowText); };
        QCOMPARE(driver.text(), "No Video Capture Device!");
        QCOMPARE(colour(), QColor(255, 0, 0));
        program.Core->Start();
        program.System.Cameras.Devices = {{"Other", {}, {}, {}}};
        program.Time.Advance(10'000);
        QCOMPARE(program.Core->DriverIndex(), -1);
        program.System.Cameras.Devices << CaptureDevice{"Garden", {}, {}, {}};
        program.Time.Advance(10'000);
        QCOMPARE(driver.text(), "Garden");
        QCOMPARE(colour(), QColor(0, 0, 255));
        QVERIFY(program.Core->PictureValues.CameraRunning);
    }

    // A skin with a broken file: told once, and the control has what the default skin has.
    void BrokenPictures_data() {
        const Rows<QString, QByteArray> row;
        row("a button is missing", "button_go.jpg", {});
        row("no picture", "LEDleft.jpg", "BM\xFF\xD8\x01\x02 no picture");
        QBuffer half;
        QImage(80, 80, QImage::Format_RGB32).save(&half, "JPG");
        row("half a picture", "LEDleft.jpg", half.data().chopped(half.size() / 4));
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
    }

    void WithoutAnySkin() {
        WindowFixture program;
        QDir(program.Skin("Green")).removeRecursively();
        QDir(program.Skin("Default")).removeRecursively();
        program.Start();
        QCOMPARE(program.Boxes.Shown.size(), 1);
        QVERIFY(program.Boxes.Shown[0].contains("button_go.jpg (Default)"));
        QCOMPARE(program.Setting("Einstellungen", "Skin"), "Green");
        frmSkin& window = *program.Window;
        QVERIFY(window.isVisible());
        window.setPalette(QPalette(Qt::black, Qt::black));
        QVERIFY(qGray(window.Label_Driver->palette().windowText().color().rgb()) > 110);
        const QSignalSpy ended(program.Core.get(), &Program::Ended);
        QTest::mouseClick(window.btnExit, Qt::LeftButton);
        QCOMPARE(ended.size(), 1);
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
        const QSignalSpy clicks(window.pic_klappe_open, &PictureButton::clicked);
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(window.pic_klappe_open, key);
        QCOMPARE(clicks.size(), 2);
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
        QCOMPARE(focusIn(RunState::Connecting), window.btnStop);
        QCOMPARE(focusIn(RunState::Stopped), window.btnStart);
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
    }

    void LedsTellTheTruth() {
        WindowFixture program;
        program.Start();
        frmSkin& window = *program.Window;
        const auto lit = [](PictureBox& led) { return Alike(MiddleColour(led), lightGreen); };
        QVERIFY(!lit(*window.LEDLeft) && !lit(*window.LEDReigth));
        program.System.Online.Set(true);
        program.Time.Advance(1'000);
        QVERIFY(lit(*window.LEDLeft) && !lit(*window.LEDReigth));
        program.Core->Run.Enter(RunState::Sending);
        QVERIFY(lit(*window.LEDReigth));
        program.Core->Run.Enter(RunState::Paused);
        QVERIFY2(lit(*window.LEDReigth), "the picture on its way arrives");
        program.Core->Run.Enter(RunState::WaitingToRetry);
        QVERIFY(!lit(*window.LEDReigth));
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
    }

    void ShowsWhatVisitorsSee() {
        WindowFixture program;
        SkinMaker::Picture(program.Folder.filePath("pw.jpg"), {64, 48}, Qt::yellow);
        SkinMaker::Picture(program.Folder.filePath("new.jpg"), {64, 48}, Qt::cyan);
        program.Start();
        frmSkin& window = *program.Window;
        window.preview->SetPicture(QImage(64, 48, QImage::Format_RGB32));
        VisitorsView& visitors = *window.visitors;
        const auto publish = [&](const QString& file) {
            program.Core->State.KeepPublished(program.Folder.filePath(file),
                                              program.Time.Milliseconds());
        };
        const auto shows = [&](const QColor& colour) {
            return Alike(window.preview->grab().toImage().pixelColor(100, 100), colour);
        };
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_F4);
        QVERIFY2(!window.pic_klappe->isVisible(), "the flap would hide it");
        QCOMPARE(visitors.lblAge->text(), "Nothing was published since the start");
        publish("pw.jpg");
        program.Time.Advance(12'000);
        QVERIFY(shows(Qt::yellow));
        QCOMPARE(visitors.lblAge->text(), "Visitors see a picture 12 s old");
        publish("new.jpg");
        program.Time.Advance(300'000);
        QVERIFY(shows(Qt::cyan));
        QCOMPARE(visitors.lblAge->text(), "Visitors see a picture 5 min old");
        QCOMPARE(window.btnView->text(), "Camera");
        QTest::mouseClick(window.btnView, Qt::LeftButton);
        QVERIFY(visitors.isHidden() && !shows(Qt::cyan));
    }

    void NoSkinIsLargerThanTheScreen() {
        WindowFixture program;
        program.Start();
        const QPoint usual = program.Window->btnStart->pos();
        const QSize button = program.Window->btnStart->size();
        const QImage splash(program.Skin("Green", "splash.bmp"));
        const QSize screen = program.Window->screen()->availableSize();
        splash.copy(0, 0, splash.width(), 2 * screen.height())
            .save(program.Skin("Green", "splash.bmp"));
        program.Start();
        const frmSkin& window = *program.Window;
        QCOMPARE(window.size(), QSize(splash.width() / 2, screen.height()));
        QVERIFY((window.btnStart->pos() - usual / 2).manhattanLength() <= 2);
        QCOMPARE(window.btnStart->size(), button / 2);
    }

    void LargeLettersKeepToThePlate() {
        const QFont usual = QApplication::font();
        const auto restore = qScopeGuard([&usual] { QApplication::setFont(usual); });
        QFont large = usual;
        large.setPointSize(18);
        QApplication::setFont(large);
        WindowFixture program;
        program.Set("Cameras", "Cam0", "Gate|test:64x48");
        program.Start();
        const frmSkin& window = *program.Window;
        QVERIFY(!window.Label_Driver->geometry().intersects(window.cbDriver->geometry()));
        QVERIFY(window.cbDriver->fontMetrics().height() < window.cbDriver->height());
    }

    void PauseBlinksInItsPlace() {
        WindowFixture program;
        program.Start();
        QLabel& line = *program.Window->lblStatus;
        line.resize(200, line.height());
        StatusDisplay& display = program.Core->Display;
        display.ShowPictureCount("Pic: 7");
        program.Core->Run.Enter(RunState::Paused);
        const int width = line.fontMetrics().horizontalAdvance("Pause");
        const auto shown = [&](const QString& status) {
            display.ShowStatus(status);
            line.show();  // this skin has no room for it
            const QImage picture = program.Window->grab(line.geometry()).toImage();
            return std::pair(picture.copy(0, 0, width, line.height()),
                             picture.copy(width, 0, line.width() - width, line.height()));
        };
        const auto lit = shown("Pause");
        const auto unlit = shown({});
        QVERIFY(lit.first != unlit.first);
        QCOMPARE(lit.second, unlit.second);
        QCOMPARE(program.Window->windowTitle(), "Stillpost - Pause");
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
        program.Window->move(30, 40);
        program.Core->Exit();
        program.Start();
        QCOMPARE(program.Window->pos(), QPoint(30, 40));
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
        const auto send = [&window](QEvent::Type type, const QPointF& at) {
            QMouseEvent event(type, window.mapFromGlobal(at), at, Qt::LeftButton, Qt::LeftButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
        };
        send(QEvent::MouseButtonPress, {110, 250});
        send(QEvent::MouseMove, {140, 260});
        QCOMPARE(window.pos(), QPoint(130, 110));
    }
};

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
