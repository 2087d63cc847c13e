#include <QDir>
#include <QImage>
#include <QLibraryInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/prctl.h>
#include <csignal>

namespace {

constexpr QRgb desktopColour = 0xff12ab34;
constexpr int patience = 60'000;

// What of the picture has another colour than its ground.
QRect Covered(const QImage& picture, QRgb ground) {
    QRect covered;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != ground) covered |= QRect(x, y, 1, 1);
    return covered;
}

}  // namespace

// A Wayland desktop without a screen, and pictures of it.
class TestWayland : public QObject {
    Q_OBJECT

    QTemporaryDir folder;  // of its socket as well
    QProcess desktop;

    void Write(const QString& name, const QByteArray& text) const {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    }

    void Begin(QProcess& process, const QString& program, const QStringList& arguments) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        environment.insert("WAYLAND_DISPLAY", "desktop");
        environment.insert("QT_QPA_PLATFORM", "wayland");
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(program, arguments);
    }

    // The whole desktop; null while there is none.
    [[nodiscard]] QImage Picture() const {
        const QDir place(folder.path(), "wayland-screenshot-*.png");
        for (const QString& old : place.entryList()) QFile::remove(place.filePath(old));
        if (!QFile::exists(folder.filePath("desktop"))) return {};
        QProcess shooter;
        Begin(shooter, "weston-screenshooter", {});
        shooter.waitForFinished();
        return QImage(place.filePath(place.entryList().value(0)))
            .convertToFormat(QImage::Format_RGB32);
    }

  private slots:
    void initTestCase() {
        const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
        const bool there = !QStandardPaths::findExecutable("weston").isEmpty() &&
                           !plugins.entryList({"*wayland*"}).isEmpty();
        if (!there && qEnvironmentVariable("CI") != "true")
            QSKIP("weston or qt6-wayland is not installed");
        Write("weston.ini",
              "[shell]\npanel-position=none\nstartup-animation=none\nanimation=none\n"
              "locking=false\nbackground-color=0xff12ab34\n");
        Begin(desktop, "weston",
              {"--backend=headless-backend.so", "--use-pixman", "--width=1280", "--height=800",
               "--debug", "--idle-time=0", "--socket=desktop",
               "--config=" + folder.filePath("weston.ini")});
        const auto bare = [this] {
            const QImage picture = Picture();
            return !picture.isNull() && Covered(picture, desktopColour).isNull();
        };
        QVERIFY(QTest::qWaitFor(bare, patience));
    }

    void TheDesktopShowsAroundAWindow() {
        Write("ftpOptions.ini",
              "[Einstellungen]\nTreiber=Test\nPreview=0\n[Cameras]\nCam0=Test|test:320x240\n"
              "[Window]\nWindowLeft=300\nWindowTop=200\n");
        QProcess program;
        Begin(program, STILLPOST_PROGRAM "/stillpost", {"--folder", folder.path(), "/autostarter"});
        const QImage skin(STILLPOST_PROGRAM "/Skins/Default/splash.bmp");
        const QRgb key = skin.pixel(0, 0);
        const QRect outline = Covered(skin, key);
        QImage picture;
        const auto shown = [&] {
            picture = Picture();
            return Covered(picture, desktopColour).size() == outline.size();
        };
        QVERIFY2(QTest::qWaitFor(shown, patience), "no window of that outline");
        const QPoint corner = Covered(picture, desktopColour).topLeft() - outline.topLeft();
        for (int y = 0; y < skin.height(); ++y)
            for (int x = 0; x < skin.width(); ++x)
                if (skin.pixel(x, y) == key)
                    QCOMPARE(picture.pixel(corner + QPoint(x, y)), desktopColour);
        program.terminate();
        QVERIFY(program.waitForFinished());
        QCOMPARE(QSettings(folder.filePath("ftpOptions.ini"), QSettings::IniFormat)
                     .value("Window/WindowLeft"),
                 "300");
    }

    void cleanupTestCase() {
        desktop.terminate();
        desktop.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(TestWayland)
#include "test_wayland.moc"
