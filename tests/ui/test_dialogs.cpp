#include "base/status_hub.h"
#include "camera/ezvidcap.h"
#include "core/log/log_file.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "ui/dialogs/day_strip.h"
#include "ui/dialogs/day_view.h"
#include "ui/dialogs/frm_another_camera.h"
#include "ui/dialogs/frm_log.h"
#include "ui/dialogs/frm_msg.h"
#include "ui/dialogs/frm_report.h"
#include "ui/dialogs/frm_statusgesamt.h"
#include "ui/dialogs/info.h"
#include "ui/film/frm_film.h"
#include "ui/guide/guide.h"
#include "ui/main/link_button.h"
#include "ui/menu/frm_download_hilfe.h"
#include "ui/menu/frm_menue.h"
#include "ui/settings/camera/frm_cam.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings_fixture.h"
#include "ui/shell_fixture.h"
#include "ui/skin/picture_button.h"
#include "ui/texts/languages.h"
#include "ui/tray/tray1.h"
#include "ui/widgets/menu_row.h"
#include "ui/window_boxes.h"

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class TestDialogs : public QObject {
    Q_OBJECT

  private:
    // The program with a line that it has dialled.
    class Dialled : public ShellFixture {
      public:
        Dialled() {
            Begin();
            System.Dial.EntryList = {"Provider 1"};
            Core->Net.SetDialling(true, "Provider 1");
            Core->Net.DialConfigured();
        }
    };

  private slots:
    void HangUpAnswers_data() {
        const Rows<Qt::Key, bool, bool, bool> row;  // key, ticked: hung up, ended
        row("OK, always", Qt::Key_Return, true, true, true);
        row("Close", Qt::Key_Space, true, false, true);
        row("Escape", Qt::Key_Escape, true, false, false);
    }

    void HangUpAnswers() {
        const auto [key, ticked, hungUp, ended] = Row<Qt::Key, bool, bool, bool>();
        Dialled program;
        const QSignalSpy end(program.Core.get(), &Program::Ended);
        frmMsg& question = program.Windows->HangUpWindow;
        QTest::mouseClick(program.Windows->MainWindow.btnExit, Qt::LeftButton);
        QVERIFY(question.isVisible());
        QCOMPARE(question.lblQuestion->text(),
                 "Would you like to terminate the data-communications connection to Provider 1 ?");
        QCOMPARE(question.lblEnds->text(),
                 "OK hangs up, Close leaves the connection open. Both end the program.");
        QCOMPARE(end.count(), 0);
        question.chkAlways->setChecked(ticked);
        QWidget* target =
            key == Qt::Key_Space ? static_cast<QWidget*>(question.btnClose) : &question;
        QTest::keyClick(target, key);
        QVERIFY(!question.isVisible());
        QCOMPARE(end.count(), ended ? 1 : 0);
        QCOMPARE(program.System.Dial.HungUp, hungUp ? QList({1}) : QList<int>());
        // Only OK makes the answer permanent.
        QCOMPARE(program.Setting("Einstellungen", "Abwahl"),
                 hungUp && ticked ? QString("1") : QString());
    }

    // Whoever cannot be asked, or has answered for good, is not.
    void NobodyIsAsked_data() {
        const Rows<bool, QString, bool> row;  // dialled, Abwahl, by the operator
        row("always hung up", true, "1", true);
        row("no line", false, "", true);
        row("the system ends it", true, "", false);
    }

    void NobodyIsAsked() {
        const auto [dialled, always, byOperator] = Row<bool, QString, bool>();
        Dialled program;
        if (!dialled) program.Core->Net.HangUp();
        program.Set("Einstellungen", "Abwahl", always);
        const QSignalSpy end(program.Core.get(), &Program::Ended);
        if (byOperator)
            program.Windows->MainWindow.close();
        else
            program.Core->Exit();
        QVERIFY(!program.Windows->HangUpWindow.isVisible());
        QCOMPARE(end.count(), 1);
        QCOMPARE(program.System.Dial.HungUp, QList({1}));
    }

    void OverviewFollowsOnlyWhileShown() {
        ShellFixture program;
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Set("Einstellungen", "Framerate", "30000");
        program.Begin();
        frmStatusgesamt& overview = program.Windows->Overview;
        program.Windows->MainWindow.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&program.Windows->MainWindow));
        QTest::keyClick(&program.Windows->MainWindow, Qt::Key_F11);
        QVERIFY(overview.isVisible());
        QCOMPARE(overview.Value("State"), "stopped");
        program.Core->Start();
        program.Time.Advance(10'000);
        QCOMPARE(overview.Value("State"), "running");
        QCOMPARE(overview.Value("NextPicture"), "in 20 s");
        QCOMPARE(overview.Value("RunningTime"), "00:00:10");
        QCOMPARE(overview.Value("Hours"), "always");
        overview.hide();
        program.Time.Advance(5'000);
        QCOMPARE(overview.Value("RunningTime"), "00:00:10");
        overview.Show();
        QCOMPARE(overview.Value("RunningTime"), "00:00:15");
        program.Windows->LanguageTables.ApplyGermanTexts();
        QCOMPARE(overview.Value("State"), "läuft");
        emit program.Core->FTP1.ServerResponse("220 ready\r\n");
        QVERIFY(overview.txtLog->toPlainText().endsWith(" : 220 ready\n"));
    }

    void OverviewTellsOfTheHours_data() {
        const Rows<QString, QString, QString, QString> row;  // state, hours, next picture
        row("outside", "10-22", "outside its hours", "closed until 10:00", "at 10:00");
        row("until another day", "th 10-22", "outside its hours", "closed until Th 10:00",
            "at Th 10:00");
        row("wrong", "mo x", "running",
            "Hours: at character 4, \"x\" is no day. Pictures are published at all hours.",
            "in 20 s");
    }
    void OverviewTellsOfTheHours() {
        const auto [written, state, hours, next] = Row<QString, QString, QString, QString>();
        ShellFixture program;
        program.Time.SetNow(QDateTime(QDate(2026, 3, 4), QTime(9, 0)));  // a Wednesday
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Set("Einstellungen", "Framerate", "30000");
        program.Set("Einstellungen", "Hours", written);
        program.Begin();
        program.Core->Start();
        frmStatusgesamt& overview = program.Windows->Overview;
        overview.Show();
        program.Time.Advance(10'000);
        QCOMPARE(overview.Value("State"), state);
        QCOMPARE(overview.Value("Hours"), hours);
        QCOMPARE(overview.Value("NextPicture"), next);
    }

    void OverviewTellsOfTrouble() {
        ShellFixture program;
        program.System.Online.Near = true;
        program.Begin();
        frmStatusgesamt& overview = program.Windows->Overview;
        overview.Show();
        QCOMPARE(overview.Value("Server"), QString::fromUtf8("–"));
        QCOMPARE(overview.Value("LastError"), QString::fromUtf8("–"));
        QCOMPARE(overview.Value("Connection"), "online");
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Set("Einstellungen", "Framerate", "30000");
        program.Core->LoadSettings();
        program.Core->ezVidCap1.SetDriverIndex(-1);
        program.Core->Start();
        const QDateTime start = program.Time.Now();
        const auto at = [&start](int seconds) {
            return start.addSecs(seconds).toString("HH:mm:ss");
        };
        program.Time.Advance(32'000);
        const QString why = "No Video Capture Device!";
        QCOMPARE(overview.Value("State"), "trying again since " + at(30) + ": " + why);
        QCOMPARE(overview.Value("NextPicture"), "next try at " + at(35));
        QCOMPARE(overview.Value("LastError"), why + " (" + at(30) + ")");
    }

    void OverviewTellsOfEachMinute() {
        ShellFixture program;
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Begin();
        program.Core->Start();
        program.Time.Advance(90'000);
        emit program.Core->Cycle.PicturePublished(1, 100 * 1024);
        emit program.Core->Cycle.PicturePublished(2, 200 * 1024);
        const DayView& day = *program.Windows->Overview.Day;
        program.Windows->Overview.Show();
        const QDateTime now = program.Time.Now();
        const auto minutesAgo = [&now](int count) { return now.addSecs(-count * 60LL); };
        const auto at = [&](int count) { return minutesAgo(count).toString("HH:mm: "); };
        QCOMPARE(day.lblMinute->text(), at(0) + "2 pictures published, 150 KB each");
        QTest::keyClick(day.Strip, Qt::Key_Left);
        QCOMPARE(day.lblMinute->text(), at(1) + "camera gone");
        const auto* told = QAccessible::queryAccessibleInterface(day.Strip);
        QCOMPARE(told->text(QAccessible::Description), day.lblMinute->text());
        QCOMPARE(told->role(), QAccessible::Slider);
        QTest::keyClick(day.Strip, Qt::Key_PageDown);
        QCOMPARE(day.lblMinute->text(), at(61) + "not running");
        QTest::mouseMove(day.Strip, {day.Strip->width() - 4, 20});
        QCOMPARE(day.Strip->Time().date(), now.date());
        QVERIFY(day.Strip->value() > -9);
        const QImage seen = day.Strip->grab().toImage();
        const QColor bar = DayStrip::ColourOf(MinuteState::CameraGone);
        int columns = 0;
        for (int x = 0; x < seen.width(); ++x) {
            bool found = false;
            for (int y = 0; y < seen.height(); ++y) found = found || seen.pixelColor(x, y) == bar;
            columns += found;
        }
        QCOMPARE(columns, 1);
    }

    void OffersWhatHelps_data() {
        const Rows<TroubleKind, QString, QString> row;  // kind: what the line offers, the control
        using enum TroubleKind;
        const QString none;
        row("unknown", Other, none, none);
        row("offline", Line, none, none);
        row("camera", Camera, "Camera gives no picture - Camera settings...", "Treiber");
        row("server", Server, "Server does not answer - FTP settings...", "Server");
        row("login", Login, "Password refused - FTP settings...", "PW");
        row("folder", Folder, "Folder not on the server - FTP settings...", "Verzeichnis");
        row("upload", Transfer, "Upload failed - FTP settings...", "Trial");
        row("local folder", LocalFolder, "Folder cannot be written - FTP settings...",
            "Verzeichnis");
        row("work folder", WorkFolder, "Pictures cannot be kept - Camera settings...", "Path");
    }

    void OffersWhatHelps() {
        const auto [kind, offer, field] = Row<TroubleKind, QString, QString>();
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        LinkButton& line = *shell.MainWindow.btnRemedy;
        program.Core->Run.Enter(RunState::WaitingToRetry, Trouble{"why", kind});
        program.Core->Run.Enter(RunState::Connecting);
        QCOMPARE(line.text(), offer);
        QVERIFY(line.toolTip().startsWith(offer));
        shell.Overview.Show();
        QCOMPARE(shell.Overview.btnRemedy->isVisible(), !offer.isEmpty());
        if (offer.isEmpty()) return;
        QCOMPARE(shell.Overview.btnRemedy->accessibleName(), offer);
        const bool camera = offer.contains("Camera settings");
        SettingsWindow& window =
            camera ? static_cast<SettingsWindow&>(shell.CameraWindow) : shell.FtpWindow;
        const auto isThere = [&window, name = field] {
            const bool there = window.isVisible() && window.lblNote->text() == "why" &&
                               window.focusWidget() == window.findChild<QWidget*>(name);
            window.hide();
            return there;
        };
        shell.Overview.btnRemedy->click();
        QVERIFY(isThere());
        QTest::keyClick(&line, Qt::Key_Return);
        QVERIFY(isThere());
        // With other access data it is no longer so.
        program.Core->Run.Enter(RunState::Stopped, Trouble{"why", kind});
        QVERIFY(line.toolTip().startsWith(offer));
        program.Set("Einstellungen", "PW", "another");
        program.Core->LoadSettings();
        QCOMPARE(line.toolTip(), "Offline");
    }

    void TheLogIsShownAndFollowed() {
        ShellFixture program;
        program.Begin();
        LogFile log(program.Folder.path());
        for (int i = 0; i < 300; ++i) log.Write("line " + QString::number(i));
        program.Windows->Overview.Show();
        program.Windows->Overview.btnLog->click();
        frmLog& window = program.Windows->LogWindow;
        QVERIFY(window.isVisible());
        QVERIFY(window.txtLines->toPlainText().startsWith("line 100\n"));
        log.Write("newest");
        program.Time.Advance(2'000);
        QVERIFY(window.txtLines->toPlainText().endsWith("line 299\nnewest"));
        window.btnFolder->click();
        QCOMPARE(program.Opened, QList{QUrl::fromLocalFile(program.Folder.path())});
    }

    void TheReportCanBeGivenAway() {
        ShellFixture program;
        program.Set("Einstellungen", "PW", "geheim");
        program.System.Cameras.Devices = {{"Cam A", "usb-1", "v4l2", "/dev/video0"}};
        program.System.Cameras.DeviceFormats = {
            {.Width = 64, .Height = 48, .PixelFormat = "mjpeg"}};
        program.Begin();
        LogFile(program.Folder.path()).Write("530 geheim is wrong");
        program.Windows->AboutBox.Show();
        program.Windows->AboutBox.btnReport->click();
        frmReport& window = program.Windows->ReportWindow;
        QVERIFY(window.isVisible() && !window.btnCopy->isEnabled());
        QTRY_VERIFY(window.btnCopy->isEnabled());
        const QString text = window.txtLines->toPlainText();
        for (const char* part : {"Cam A, usb-1", "64x48 mjpeg", "530 *** is wrong", "PW=***",
                                 "without a display", "FFmpeg "})
            QVERIFY2(text.contains(QString::fromLatin1(part)), qPrintable(text));
        QVERIFY(!text.contains("geheim"));
        window.btnCopy->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), text);
        const QString file = program.Folder.filePath("report.txt");
        window.Save(file);
        QCOMPARE(QString::fromUtf8(ReadBytes(file)), text);
    }

    void AnotherCameraGetsAProgramOfItsOwn() {
        ShellFixture program;
        program.Set("Einstellungen", "Name", "Yard");
        program.Begin();
        Shell& shell = *program.Windows;
        QCOMPARE(shell.MainWindow.windowTitle().section(" - ", 0, 1), "Yard - Stillpost");
        QCOMPARE(shell.Tray.ToolTip(), "Yard - Stillpost: stopped, 0 pictures, offline");
        const QSignalSpy wanted(&shell, &Shell::ProgramWanted);
        frmAnotherCamera& window = shell.AnotherCameraWindow;
        program.OpenMenu().Label1[frmMenue::AnotherCamera]->click();
        QTest::keyClick(window.txtName, Qt::Key_Return);
        QVERIFY(window.isVisible() && !window.lblNote->text().isEmpty());
        QTest::keyClicks(window.txtName, "The garden");
        QTest::keyClick(window.txtName, Qt::Key_Return);
        QVERIFY(!window.isVisible());
        QCOMPARE(wanted.count(), 1);
        QCOMPARE(QDir(wanted[0][0].toString()),
                 QDir(program.Folder.filePath("cameras/The-garden")));
        // What is started there begins with what is missing.
        shell.OfferGuide();
        QVERIFY(shell.FirstSteps.isVisible());
    }

    void MakesAFilm() {
        ShellFixture program;
        program.Set("Einstellungen", "ArchivePath", program.Folder.path());
        program.Set("Einstellungen", "FilmEvery", "2");
        const QStringList names{"2026-03-04-0900", "2026-03-04-1000", "2026-03-04-1100"};
        for (const QString& name : names)
            SkinMaker::Picture(program.Folder.filePath(name + "00.jpg"), {64, 48}, Qt::red);
        program.Begin();
        Shell& shell = *program.Windows;
        frmFilm& window = shell.FilmWindow;
        QTest::mouseClick(program.OpenMenu().Label1[frmMenue::Film], Qt::LeftButton);
        QVERIFY(window.isVisible());
        QTRY_COMPARE(window.lblCount->text(), "2 pictures, 0:01 long");
        QCOMPARE(window.Strip->count(), 3);
        const QColor ground = Qt::darkGray;
        QTRY_VERIFY(window.Strip->item(2)->icon().pixmap(128, 96).toImage().pixelColor(64, 48) !=
                    ground);
        window.Strip->setCurrentRow(1);
        window.btnBegin->click();
        QCOMPARE(window.edtFrom->time(), QTime(10, 0));
        program.Time.Advance(500);
        QTRY_COMPARE(window.lblCount->text(), "1 pictures, 0:01 long");
        const QString file = program.Folder.filePath("films/film.mp4");
        window.txtFile->selectAll();
        window.txtFile->insert(file);
        window.btnMake->click();
        QTRY_COMPARE(window.lblState->text(), "The film is made: 1 pictures, 0:01 long.");
        QVERIFY(QFileInfo(file).size() > 0);
        window.btnShow->click();
        QCOMPARE(program.Opened.value(0), QUrl::fromLocalFile(program.Folder.filePath("films")));
    }

    void EveryTextIsWhole() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        const auto clipped = [&](QWidget& window, const std::function<void()>& open) {
            return ClippedAnywhere(window, shell.Words, open).join("\n");
        };
        program.Core->Run.Enter(RunState::WaitingToRetry, Trouble{"why", TroubleKind::Folder});
        QCOMPARE(clipped(shell.Overview, [&] { shell.Overview.Show(); }), QString());
        QCOMPARE(clipped(shell.LogWindow, [&] { shell.LogWindow.Show(); }), QString());
        QCOMPARE(clipped(shell.ReportWindow, [&] { shell.ReportWindow.Open(); }), QString());
        const auto another = [&] {
            shell.AnotherCameraWindow.Open();
            shell.AnotherCameraWindow.accept();
        };
        QCOMPARE(clipped(shell.AnotherCameraWindow, another), QString());
        QCOMPARE(clipped(shell.AboutBox, [&] { shell.AboutBox.Show(); }), QString());
        QCOMPARE(clipped(shell.HelpPrompt, [&] { shell.HelpPrompt.Show(); }), QString());
        QCOMPARE(clipped(shell.HangUpWindow, [&] { shell.HangUpWindow.Ask("Provider 1"); }),
                 QString());
        QCOMPARE(ClippedAnywhere(shell.FilmWindow, shell.Words).join("\n"), QString());
        shell.FilmWindow.Open();
        QCOMPARE(TabFaults(shell.FilmWindow).join("\n"), QString());
        const auto openMenu = [&] {
            shell.Menu.CloseAll();
            (void)program.OpenMenu();
        };
        QCOMPARE(clipped(shell.Menu, openMenu), QString());
    }

    void MessagesAreReadOneByOne() {
        WindowBoxes boxes(false);
        for (const char* text : {"first", "second", "first", "second", "third"})
            boxes.Show("Stillpost", QString::fromLatin1(text), MessageBoxes::Icon::Warning);
        QStringList read;
        const auto visible = [] {
            for (QWidget* window : QApplication::topLevelWidgets())
                if (auto* box = qobject_cast<QMessageBox*>(window); box && box->isVisible())
                    return box;
            return static_cast<QMessageBox*>(nullptr);
        };
        while (QMessageBox* box = visible()) {
            read << box->text();
            box->accept();
        }
        QCOMPARE(read, QStringList({"first", "second", "third"}));
    }
};

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
