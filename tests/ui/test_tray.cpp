#include "support/data_rows.h"
#include "ui/shell_fixture.h"
#include "ui/status/frm_status.h"
#include "ui/texts/languages.h"
#include "ui/tray/program_icons.h"
#include "ui/tray/tray1.h"

#include <QDir>

class TestTray : public QObject {
    Q_OBJECT

  private slots:
    void TooltipAndIcon_data() {
        using enum Texts::Language;
        const Rows<TrayState, Texts::Language, QString, QString> row;
        row("running", {RunState::Waiting, 312, true}, English,
            "Stillpost: running, 312 pictures, online", "running");
        row("one picture", {RunState::Sending, 1, false}, English,
            "Stillpost: running, 1 picture, offline", "offline");
        row("paused", {RunState::Paused, 2, false}, German, "Stillpost: Pause, 2 Bilder, offline",
            "paused");
        row("stopped", {RunState::Stopped, 0, true}, French,
            "Stillpost : arrêté, 0 images, en ligne", "stopped");
        row("offline picture", {RunState::Offline, 5, true}, English,
            "Stillpost: stopped, offline picture shown, 5 pictures, online", "offline");
        row("connecting", {RunState::Connecting, 5, true}, German,
            "Stillpost: verbindet, 5 Bilder, online", "running");
    }

    void TooltipAndIcon() {
        const auto [state, language, tooltip, icon] =
            Row<TrayState, Texts::Language, QString, QString>();
        QCOMPARE(TrayTooltip(Texts(language), state), tooltip);
        QCOMPARE(TrayIconName(state), icon);
    }

    void IconsOfWhateverSizesThereAre() {
        const QTemporaryDir folder;
        QDir(folder.path()).mkdir("icons");
        QVERIFY(ProgramIcon({folder.path()}, "tray-running").isNull());
        for (const int size : {16, 22}) {
            QImage image(size, size, QImage::Format_ARGB32);
            image.fill(Qt::green);
            image.save(folder.filePath(QString("icons/tray-running-%1.png").arg(size)));
        }
        SkinMaker::Write(folder.filePath("icons/tray-running-99.png"), "damaged");
        const QIcon icon = ProgramIcon({"/nowhere", folder.path()}, "tray-running");
        QCOMPARE(icon.availableSizes().size(), 2);
    }

    void FollowsTheRun() {
        ShellFixture program;
        program.Set("Einstellungen", "Server", "Local");
        program.Set("Einstellungen", "Verzeichnis", program.Folder.path());
        program.Begin();
        Tray1& tray = program.Windows->Tray;
        QCOMPARE(tray.ToolTip(), "Stillpost: stopped, 0 pictures, offline");
        QVERIFY(tray.Start->isEnabled() && !tray.Stop->isEnabled() && !tray.Pause->isEnabled());
        tray.Start->trigger();
        program.Core->Display.ShowOnline(true);
        emit program.Core->Cycle.PicturePublished(1);
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

    void BringsWindowsBack() {
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

QTEST_MAIN(TestTray)
#include "test_tray.moc"
