#include "base/paths.h"
#include "base/status_hub.h"
#include "ui/dialogs/frm_oberflaeche.h"
#include "ui/dialogs/info.h"
#include "ui/guide/guide.h"
#include "ui/menu/frm_download_hilfe.h"
#include "ui/menu/frm_language.h"
#include "ui/menu/frm_menue.h"
#include "ui/menu/frm_web.h"
#include "ui/menu/links.h"
#include "ui/settings/camera/camera_sources.h"
#include "ui/settings/camera/frm_cam.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/shell_fixture.h"
#include "ui/skin/picture_button.h"
#include "ui/status/frm_status.h"
#include "ui/texts/languages.h"
#include "ui/tray/tray1.h"
#include "ui/widgets/menu_row.h"
#include "ui/widgets/preview_area.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>

namespace {

void Hover(MenuRow& row) {
    const QPointF at(5, 5);
    QMouseEvent event(QEvent::MouseMove, at, row.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&row, &event);
}

void Press(QWidget& window, Qt::Key key) {
    QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key);
}

}  // namespace

class TestMenu : public QObject {
    Q_OBJECT

  private slots:
    void WholeOnTheScreen() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        const QRect screen = shell.MainWindow.screen()->geometry();
        const QSize room = screen.size() - shell.MainWindow.size();
        shell.MainWindow.move(room.width(), room.height());
        frmMenue& menu = program.OpenMenu();
        QVERIFY(screen.contains(menu.geometry()));
        for (const auto& [entry, flyOut] :
             QList<std::pair<int, QWidget*>>{{frmMenue::Language, &shell.LanguageWindow},
                                             {frmMenue::Skins, &shell.Chooser},
                                             {frmMenue::Web, &shell.WebWindow}}) {
            Hover(*menu.Label1[entry]);
            QVERIFY(flyOut->isVisible());
            const int left = menu.geometry().left() - screen.left();
            if (flyOut->width() > std::max(left, screen.right() - menu.geometry().right()))
                QSKIP("this system's letters are too wide for the little screen");
            QVERIFY(screen.contains(flyOut->geometry()));
            QVERIFY(!flyOut->geometry().intersects(menu.geometry()));
        }
        Hover(*menu.Label1[frmMenue::Help]);
        QVERIFY(!shell.WebWindow.isVisible());
    }

    void WithTheKeyboardAlone() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        frmMenue& menu = program.OpenMenu();
        QVERIFY(menu.isVisible() && program.Core->State.MenuOpen);
        QCOMPARE(menu.focusWidget(), menu.Label1[0]);
        Press(menu, Qt::Key_Down);
        Press(menu, Qt::Key_Right);
        QVERIFY(QTest::qWaitForWindowActive(&shell.LanguageWindow));
        QCOMPARE(shell.LanguageWindow.focusWidget(), shell.LanguageWindow.Label1[1]);
        Press(shell.LanguageWindow, Qt::Key_Left);
        QVERIFY(!shell.LanguageWindow.isVisible() && program.Core->State.MenuOpen);
        QCOMPARE(menu.focusWidget(), menu.Label1[1]);
        Press(menu, Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(&shell.LanguageWindow));
        Press(shell.LanguageWindow, Qt::Key_Up);
        Press(shell.LanguageWindow, Qt::Key_Return);
        QVERIFY(!program.Core->State.MenuOpen && !menu.isVisible() &&
                !shell.LanguageWindow.isVisible());
        QCOMPARE(menu.Label1[1]->text(), "Sprache");
        QCOMPARE(program.Setting("Einstellungen", "Sprache"), "deutsch");
        QTest::keyClick(&shell.MainWindow, Qt::Key_F8);
        QTRY_VERIFY(menu.isVisible());
        Press(menu, Qt::Key_Escape);
        QVERIFY(!program.Core->State.MenuOpen && !menu.isVisible());
    }

    void ClosedByAClickElsewhere() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        const frmMenue& menu = program.OpenMenu();
        Hover(*menu.Label1[frmMenue::Web]);
        QTest::mouseClick(&shell.MainWindow, Qt::LeftButton);
        QVERIFY(!menu.isVisible() && !shell.WebWindow.isVisible() && !program.Core->State.MenuOpen);
        QTest::mouseClick(shell.MainWindow.btnOptions, Qt::LeftButton);
        QVERIFY(menu.isVisible());
        QTest::mouseClick(shell.MainWindow.btnOptions, Qt::LeftButton);
        QVERIFY2(!menu.isVisible(), "the same click closed it and opened it again");
        program.OpenMenu();
        shell.MainWindow.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&shell.MainWindow));
        program.Time.Advance(300);
        QVERIFY2(!menu.isVisible(), "the keyboard is elsewhere");
    }

    // As under Wayland: the toolkit hands all input to the popup that opened last.
    void PopupsShareTheInput() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        frmMenue& menu = shell.Menu;
        for (QWidget* window : std::initializer_list<QWidget*>{&menu, &shell.LanguageWindow,
                                                               &shell.Chooser, &shell.WebWindow})
            window->setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
        const auto over = [&menu](frmMenue::Entry entry) {
            const QPoint at = menu.Label1[entry]->pos() + QPoint(5, 5);
            QTest::mouseMove(menu.windowHandle(), at + QPoint(1, 1));
            QTest::mouseMove(menu.windowHandle(), at);
            return menu.focusWidget() == menu.Label1[entry];
        };
        const auto key = [&shell](Qt::Key which) {
            QTest::keyClick(shell.MainWindow.windowHandle(), which);
        };
        program.OpenMenu();
        QVERIFY(over(frmMenue::Language) && shell.LanguageWindow.isVisible());
        key(Qt::Key_Down);
        QCOMPARE(menu.focusWidget(), menu.Label1[frmMenue::Ftp]);
        QVERIFY(over(frmMenue::Overlay) && !shell.LanguageWindow.isVisible());
        key(Qt::Key_Down);
        key(Qt::Key_Right);
        QVERIFY(shell.Chooser.isVisible());
        key(Qt::Key_Left);
        QVERIFY(!shell.Chooser.isVisible() && menu.isVisible());
        program.Time.Advance(300);
        QVERIFY2(menu.isVisible(), "a popup does not take the keyboard from its window");
        QVERIFY(over(frmMenue::Web) && shell.WebWindow.isVisible());
        QTest::mouseClick(shell.MainWindow.windowHandle(), Qt::LeftButton, {}, {200, 300});
        QVERIFY(!program.Core->State.MenuOpen && !menu.isVisible() && !shell.WebWindow.isVisible());
        program.OpenMenu();
        QVERIFY(over(frmMenue::Web));
        shell.WebWindow.close();
        QVERIFY2(!program.Core->State.MenuOpen && !menu.isVisible(), "the desktop closed a popup");
    }

    void Entries() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        const auto click = [&program](frmMenue::Entry entry) {
            QTest::mouseClick(program.OpenMenu().Label1[entry], Qt::LeftButton);
            return !program.Core->State.MenuOpen;
        };
        QVERIFY(click(frmMenue::Status) && shell.StatusWindow.isVisible());
        QCOMPARE(program.Setting("Window", "StatusWindow"), "1");
        QVERIFY(click(frmMenue::Ftp) && shell.FtpWindow.isVisible());
        shell.FtpWindow.reject();
        QVERIFY(click(frmMenue::Camera) && shell.CameraWindow.isVisible());
        shell.CameraWindow.reject();
        QVERIFY(click(frmMenue::Overlay) && shell.OverlayWindow.isVisible());
        shell.OverlayWindow.hide();
        QVERIFY(click(frmMenue::Info) && shell.AboutBox.isVisible());
        Press(shell.AboutBox, Qt::Key_Escape);
        QVERIFY(!shell.AboutBox.isVisible());
        QVERIFY(click(frmMenue::Guide) && shell.FirstSteps.isVisible());
        shell.FirstSteps.reject();
        QVERIFY(!click(frmMenue::Web) && shell.WebWindow.isVisible());
        QTest::mouseClick(shell.WebWindow.Label1[2], Qt::LeftButton);
        QCOMPARE(program.Opened, QList<QUrl>{Links::Web[2]});
        QVERIFY(!program.Core->State.MenuOpen && !shell.WebWindow.isVisible());
        QVERIFY(click(frmMenue::Help) && shell.HelpPrompt.isVisible());
        // Shown again at the next start.
        program.Begin();
        QVERIFY(program.Windows->StatusWindow.isVisible());
    }

    void AddressesAreDropped() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        const CameraSources& sources = shell.CameraWindow.Sources;
        QVERIFY(!Drop(*shell.MainWindow.preview, {}, "no address"));
        QVERIFY(Drop(*shell.MainWindow.preview, {}, "rtsp://me:pw@cam/1\n"));
        QVERIFY(sources.isVisible());
        QCOMPARE(sources.Form->txtAddress->text(), "rtsp://cam/1");
        QCOMPARE(sources.Form->txtPassword->text(), "pw");
        QVERIFY(Drop(*sources.lstCameras, {QUrl::fromLocalFile(program.Folder.filePath("a.mp4"))}));
        QCOMPARE(sources.lstCameras->count(), 2);
        QCOMPARE(sources.Form->txtAddress->text(), Paths::Native(program.Folder.filePath("a.mp4")));
    }

    // The installer of the help where it is missing.
    void HelpPages() {
        ShellFixture program;
        program.Set("Einstellungen", "Sprache", "deutsch");
        program.Begin();
        Shell& shell = *program.Windows;
        shell.OpenHelp();
        QVERIFY(shell.HelpPrompt.isVisible() && program.Opened.isEmpty());
        QTest::mouseClick(shell.HelpPrompt.btnAccept, Qt::LeftButton);
        QCOMPARE(program.Opened, QList<QUrl>{Links::GermanHelpInstaller});
        QVERIFY(!shell.HelpPrompt.isVisible());
        const QString path = program.Folder.filePath("Hilfe/HILFE.html");
        QDir().mkpath(QFileInfo(path).path());
        SkinMaker::Write(path, "help");
        shell.OpenHelp();
        QCOMPARE(program.Opened.last(), QUrl::fromLocalFile(path));
        // F1: the page of the window, from the menu as well; where it is missing, the start page.
        const QString page = program.Folder.filePath("Hilfe/menu.html");
        SkinMaker::Write(page, "menu");
        QTest::keyClick(program.OpenMenu().focusWidget(), Qt::Key_F1);
        QCOMPARE(program.Opened.last(), QUrl::fromLocalFile(page));
        QVERIFY(!shell.Menu.isVisible());
        shell.CameraWindow.Sources.Open();
        QTest::keyClick(shell.CameraWindow.Sources.focusWidget(), Qt::Key_F1);
        QCOMPARE(program.Opened.last(), QUrl::fromLocalFile(path));
        QFile::rename(page, program.Folder.filePath("Hilfe/camera-sources.html"));
        QTest::keyClick(shell.CameraWindow.Sources.focusWidget(), Qt::Key_F1);
        QCOMPARE(program.Opened.last().fileName(), "camera-sources.html");
        program.SystemOpens = false;
        shell.OpenHelp();
        QCOMPARE(program.Boxes.Shown.size(), 1);
        shell.HelpPrompt.btnAccept->click();
        QTest::mouseClick(shell.WebWindow.Label1[0], Qt::LeftButton);
        const QString link = Links::Web[0].toString();
        QCOMPARE(program.Boxes.Shown.size(), 3);
        QCOMPARE(program.Boxes.Shown[2], "Stillpost: Das lässt sich nicht öffnen: " + link);
    }

    void TheOneInUseIsChecked() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        frmMenue& menu = program.OpenMenu();
        Hover(*menu.Label1[frmMenue::Skins]);
        const QImage shown = shell.Chooser.grab().toImage();
        const QList<MenuRow*>& rows = shell.Chooser.Label1;
        QVERIFY(Alike(shown.pixelColor(rows[0]->pos() + QPoint(14, 10)), Qt::white));
        QVERIFY(Alike(shown.pixelColor(rows[1]->pos() + QPoint(14, 10)), SkinMaker::CheckColour));
        // Another skin dresses the window at once and closes the menu as well.
        QTest::mouseClick(rows[0], Qt::LeftButton);
        QVERIFY(Alike(MiddleColour(*shell.MainWindow.btnStart), Qt::blue));
        QCOMPARE(program.Setting("Einstellungen", "Skin"), "Default");
        QVERIFY(!program.Core->State.MenuOpen && !shell.Chooser.isVisible());
    }

    void TheTrayFollowsTheRun() {
        ShellFixture program;
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Begin();
        Tray1& tray = program.Windows->Tray;
        QCOMPARE(tray.ToolTip(), "Stillpost: stopped, 0 pictures, offline");
        QVERIFY(tray.Start->isEnabled() && !tray.Stop->isEnabled() && !tray.Pause->isEnabled());
        tray.Start->trigger();
        program.Core->Display.ShowOnline(true);
        emit program.Core->Cycle.PicturePublished(1, 0);
        QCOMPARE(tray.ToolTip(), "Stillpost: running, 1 picture, online");
        QVERIFY(!tray.Start->isEnabled() && tray.Stop->isEnabled());
        tray.Pause->trigger();
        QCOMPARE(tray.Pause->text(), "Continue");
        program.Windows->LanguageTables.ApplyGermanTexts();
        QCOMPARE(tray.ToolTip(), "Stillpost: Pause, 1 Bild, online");
        QCOMPARE(tray.Pause->text(), "Weiter");
        tray.Stop->trigger();
        QCOMPARE(tray.ToolTip(), "Stillpost: gestoppt, 1 Bild, online");
        QVERIFY(tray.Start->isEnabled());
    }

    void TheTrayTellsOfAnOutage() {
        ShellFixture program;
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Begin();
        Tray1& tray = program.Windows->Tray;
        const QString why = "Publishing has failed for ten minutes: Camera gives no picture";
        for (const QString& expected : {QString(), why}) {
            program.Set("Einstellungen", "Notify", expected.isEmpty() ? QString("0") : QString());
            program.Core->Start();
            program.Time.Advance(5'000);
            program.Time.Suspend(600'000);
            program.Time.Advance(1'000);
            QCOMPARE(tray.Message(), expected);
            tray.Stop->trigger();
        }
    }

    void TheTrayBringsWindowsBack() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        shell.MainWindow.showMinimized();
        emit shell.Tray.RestoreWanted();
        QVERIFY(shell.MainWindow.isVisible() && !shell.MainWindow.isMinimized());
        QCOMPARE(shell.Tray.Status->text(), "Show status window");
        shell.Tray.Status->trigger();
        QVERIFY(shell.StatusWindow.isVisible());
        QCOMPARE(shell.Tray.Status->text(), "Hide status window");
        shell.Tray.Status->trigger();
        QVERIFY(!shell.StatusWindow.isVisible());
        QCOMPARE(program.Setting("Window", "StatusWindow"), "0");
    }
};

QTEST_MAIN(TestMenu)
#include "test_menu.moc"
