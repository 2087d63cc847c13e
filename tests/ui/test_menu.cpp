#include "support/data_rows.h"
#include "ui/dialogs/frm_oberflaeche.h"
#include "ui/dialogs/frm_statusgesamt.h"
#include "ui/dialogs/info.h"
#include "ui/menu/frm_download_hilfe.h"
#include "ui/menu/frm_language.h"
#include "ui/menu/frm_menue.h"
#include "ui/menu/frm_web.h"
#include "ui/menu/links.h"
#include "ui/menu/menu_place.h"
#include "ui/settings/camera/frm_cam.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/shell_fixture.h"
#include "ui/skin/picture_button.h"
#include "ui/status/frm_status.h"
#include "ui/texts/languages.h"
#include "ui/tray/tray1.h"
#include "ui/widgets/menu_row.h"

#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>

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
    void FlyOutPlaces_data() {
        const Rows<QRect, int, QPoint> row;
        row("language", QRect(100, 50, 150, 190), 1, QPoint(250, 74));
        row("ends with the screen", QRect(750, 50, 150, 190), 1, QPoint(650, 74));
        row("right edge", QRect(850, 50, 150, 190), 7, QPoint(750, 198));
    }

    void FlyOutPlaces() {
        const auto [menu, entry, expected] = Row<QRect, int, QPoint>();
        const QSize flyOut(100, 80);
        QCOMPARE(FlyOutPlace(menu, flyOut, entry, {0, 0, 1000, 800}), expected);
        // The same on a screen left of the first one.
        QCOMPARE(
            FlyOutPlace(menu.translated(-1000, 40), flyOut, entry, QRect(-1000, 40, 1000, 800)),
            expected + QPoint(-1000, 40));
    }

    void MenuPlaces_data() {
        const Rows<QPoint, QPoint> row;
        row("just fits", QPoint(810, 100), QPoint(850, 100));
        row("left of the button", QPoint(811, 100), QPoint(661, 100));
        row("bottom", QPoint(100, 700), QPoint(140, 610));
        row("above the screen", QPoint(100, -30), QPoint(140, 0));
    }

    void MenuPlaces() {
        const auto [button, expected] = Row<QPoint, QPoint>();
        QCOMPARE(MenuPlace({button, QSize(40, 20)}, {150, 190}, {0, 0, 1000, 800}), expected);
    }

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
        // Each fly-out lines up with its entry.
        for (const auto& [entry, y] : {std::pair(1, 24), std::pair(5, 104), std::pair(7, 148)})
            QCOMPARE(menu.Label1[entry]->y(), y);
    }

    void WithTheKeyboardAlone() {
        ShellFixture program;
        program.Begin();
        Shell& shell = *program.Windows;
        frmMenue& menu = program.OpenMenu();
        QVERIFY(menu.isVisible() && program.Core->State.MenuOpen);
        QCOMPARE(menu.focusWidget(), menu.Label1[0]);
        Press(menu, Qt::Key_End);
        QCOMPARE(menu.focusWidget(), menu.Label1[frmMenue::Info]);
        Press(menu, Qt::Key_Home);
        QCOMPARE(menu.focusWidget(), menu.Label1[0]);
        Press(menu, Qt::Key_Down);
        Press(menu, Qt::Key_Right);
        QVERIFY(QTest::qWaitForWindowActive(&shell.LanguageWindow));
        QCOMPARE(shell.LanguageWindow.focusWidget(), shell.LanguageWindow.Label1[1]);
        Press(shell.LanguageWindow, Qt::Key_Left);
        QVERIFY(!shell.LanguageWindow.isVisible() && program.Core->State.MenuOpen);
        QCOMPARE(menu.focusWidget(), menu.Label1[1]);
        for (int i = 1; i < frmMenue::Skins; ++i) Press(menu, Qt::Key_Down);
        Press(menu, Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(&shell.Chooser));
        Press(shell.Chooser, Qt::Key_Escape);
        QVERIFY(!shell.Chooser.isVisible() && program.Core->State.MenuOpen);
        menu.Label1[frmMenue::Language]->setFocus();
        Press(menu, Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(&shell.LanguageWindow));
        Press(shell.LanguageWindow, Qt::Key_Up);
        Press(shell.LanguageWindow, Qt::Key_Return);
        QVERIFY(!program.Core->State.MenuOpen && !menu.isVisible() &&
                !shell.LanguageWindow.isVisible());
        QCOMPARE(program.Setting("Einstellungen", "Sprache"), "deutsch");
        QCOMPARE(menu.Label1[1]->text(), "Sprache");
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
        QVERIFY(!click(frmMenue::Web) && shell.WebWindow.isVisible());
        QTest::mouseClick(shell.WebWindow.Label1[2], Qt::LeftButton);
        QCOMPARE(program.Opened, QList<QUrl>{Links::Web[2]});
        QVERIFY(!program.Core->State.MenuOpen && !shell.WebWindow.isVisible());
        program.Boxes.Shown.clear();
        program.SystemOpens = false;
        QVERIFY(QDir(program.Folder.path()).mkpath("help"));
        SkinMaker::Write(program.Folder.filePath("help/HELP.html"), "help");
        QVERIFY(click(frmMenue::Help));
        QCOMPARE(program.Boxes.Shown.size(), 1);
        // Shown again at the next start, until it is closed.
        program.Begin();
        QVERIFY(program.Windows->StatusWindow.isVisible());
        program.Windows->StatusWindow.close();
        program.Begin();
        QVERIFY(!program.Windows->StatusWindow.isVisible());
    }

    void HelpPages_data() {
        const Rows<QString, QString, QUrl> row;
        row("English", "english", "/help/HELP.html", Links::HelpInstaller);
        row("German", "deutsch", "/Hilfe/HILFE.html", Links::GermanHelpInstaller);
    }

    void HelpPages() {
        const auto [language, page, installer] = Row<QString, QString, QUrl>();
        ShellFixture program;
        program.Set("Einstellungen", "Sprache", language);
        program.Begin();
        Shell& shell = *program.Windows;
        shell.OpenHelp();
        QVERIFY(shell.HelpPrompt.isVisible() && program.Opened.isEmpty());
        QVERIFY(shell.HelpPrompt.Label1->text().contains(language == "deutsch"
                                                             ? QString("gefunden werden!\r\nM")
                                                             : "can't be found.\r\nDownload and"));
        QTest::mouseClick(shell.HelpPrompt.btnAccept, Qt::LeftButton);
        QCOMPARE(program.Opened, QList<QUrl>{installer});
        QVERIFY(!shell.HelpPrompt.isVisible());
        const QString path = program.Folder.path() + page;
        QDir().mkpath(QFileInfo(path).path());
        SkinMaker::Write(path, "help");
        shell.OpenHelp();
        QCOMPARE(program.Opened.last(), QUrl::fromLocalFile(path));
        QVERIFY(!shell.HelpPrompt.isVisible());
    }

    void CheckPictures() {
        ShellFixture program;
        program.Set("Einstellungen", "Sprache", "franz");
        program.Begin();
        frmMenue& menu = program.OpenMenu();
        Hover(*menu.Label1[frmMenue::Language]);
        const QImage shown = program.Windows->LanguageWindow.grab().toImage();
        for (int i = 0; i < 3; ++i) {
            const MenuRow& row = *program.Windows->LanguageWindow.Label1[i];
            QCOMPARE(row.isChecked(), i == 2);
            const QColor mark = shown.pixelColor(row.pos() + QPoint(14, 10));
            QVERIFY(Alike(mark, i == 2 ? SkinMaker::CheckColour : QColor(Qt::white)));
        }
        // The chooser closes the menu as well, and dresses both windows.
        Hover(*menu.Label1[frmMenue::Skins]);
        QTest::mouseClick(program.Windows->Chooser.Label1[0], Qt::LeftButton);
        QVERIFY(!program.Core->State.MenuOpen);
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
        QCOMPARE(overview.Value("NextPicture"), "–");
        QCOMPARE(overview.Value("Interval"), "30 s");
        QVERIFY(overview.Value("Server").startsWith("local folder"));
        program.Core->Start();
        program.Core->Display.ShowMegabytes("MB: 1.5");
        program.Time.Advance(10'000);
        QCOMPARE(overview.Value("State"), "running");
        QCOMPARE(overview.Value("NextPicture"), "in 20 s");
        QCOMPARE(overview.Value("RunningTime"), "00:00:10");
        QCOMPARE(overview.Value("Megabytes"), "1.5");
        Press(overview, Qt::Key_Escape);
        QVERIFY(!overview.isVisible());
        program.Time.Advance(5'000);
        QCOMPARE(overview.Value("RunningTime"), "00:00:10");
        overview.Show();
        QCOMPARE(overview.Value("RunningTime"), "00:00:15");
        program.Windows->LanguageTables.ApplyGermanTexts();
        QCOMPARE(overview.Value("State"), "läuft");
        emit program.Core->FTP1.ServerResponse("220 ready\r\n");
        QVERIFY(overview.txtLog->toPlainText().endsWith(" : 220 ready\n"));
    }
};

QTEST_MAIN(TestMenu)
#include "test_menu.moc"
