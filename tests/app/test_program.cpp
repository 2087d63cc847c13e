// The program itself, as a terminal or the system's manager of services starts it.

#include "base/profile_file.h"
#include "platform/system_clock.h"
#include "support/few_files.h"
#include "support/file_bytes.h"
#include "support/scripted_ftp_server.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <csignal>
#include <cstring>

#include <unistd.h>

namespace {

constexpr int patience = 60'000;

// What the program tells the manager of services.
class NotifySocket {
  public:
    QByteArray Path;
    QByteArrayList Told;

    explicit NotifySocket(const QString& path) : Path(QFile::encodeName(path)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, Path.constData(), sizeof address.sun_path - 1);
        there = bind(end, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~NotifySocket() { close(end); }
    NotifySocket(const NotifySocket&) = delete;
    NotifySocket& operator=(const NotifySocket&) = delete;

    [[nodiscard]] bool Heard(const QByteArray& what, int times = 1) {
        std::array<char, 500> text{};
        for (ssize_t size = 0; (size = recv(end, text.data(), text.size(), MSG_DONTWAIT)) > 0;)
            Told << QByteArray(text.data(), size);
        return there && Told.count(what) >= times;
    }

  private:
    int end = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    bool there = false;
};

class VirtualScreen {
  public:
    VirtualScreen() {
        screen.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        screen.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
        if (screen.waitForStarted()) screen.waitForReadyRead(patience);
    }
    ~VirtualScreen() {
        screen.terminate();
        screen.waitForFinished(patience);
    }
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    // Of a program that shows its windows there; none: Xvfb is not installed.
    [[nodiscard]] QMap<QString, QString> Variables() {
        if (number.isEmpty()) number = QString::fromLatin1(screen.readLine().trimmed());
        if (number.isEmpty()) return {};
        return {{"DISPLAY", ":" + number}, {"QT_QPA_PLATFORM", "xcb"}};
    }

  private:
    QProcess screen;
    QString number;
};

}  // namespace

class TestProgram : public QObject {
    Q_OBJECT

    QTemporaryDir folder;

    void Begin(QProcess& process, const QStringList& arguments,
               const QMap<QString, QString>& variables = {}) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(name));
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        environment.insert("QT_DEBUG_PLUGINS", "1");
        for (auto each = variables.begin(); each != variables.end(); ++each)
            environment.insert(each.key(), each.value());
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.start(STILLPOST_PROGRAM "/stillpost",
                      QStringList{"--folder", folder.filePath("program")} + arguments);
    }

    struct Result {
        int Status;
        QString Output;
        QString Errors;
    };
    [[nodiscard]] Result Run(const QStringList& arguments) const {
        QProcess process;
        Begin(process, arguments);
        const bool ended = process.waitForFinished(patience);
        return {ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

  private slots:
    void init() {
        QVERIFY(QDir(folder.path()).mkpath("program/public"));
        QVERIFY(
            WriteBytes(folder.filePath("program/ftpOptions.ini"),
                       "[Einstellungen]\nServer=local\nVerzeichnis=public\nTreiber=Test\n"
                       "Autostart=1\nFramerate=200\nOverlay=5\n[Cameras]\nCam0=Test|test:64x48\n"));
    }

    void WithoutAScreen() {
        const Result check = Run({"--check"});
        QVERIFY2(check.Status == 0, qPrintable(check.Output));
        QCOMPARE(check.Output.split(u'\n').size(), 5);
        QVERIFY(check.Output.contains("Camera: Test gives pictures of 64 x 48 pixels."));
        QCOMPARE(Run({"--list-cameras"}).Output.section(u'\n', -2, -2),
                 "Test (written down in the settings)");
        const Result report = Run({"--report"});
        QVERIFY2(report.Status == 0 && report.Output.contains("  without a display\n") &&
                     report.Output.contains("  Cam0=Test|test:64x48\n"),
                 qPrintable(report.Output));
        const Result once = Run({"--once"});
        QVERIFY2(once.Status == 0, qPrintable(once.Output));
        QCOMPARE(QImage(folder.filePath("program/public/pw.jpg")).size(), QSize(64, 48));
        const QString page = folder.filePath("program/public/index.html");
        QCOMPARE(Run({"--web-page"}).Output, "The page is there.\n");
        QVERIFY(ReadBytes(page).contains("data-interval=\"1\" data-history=\"0\""));
        QVERIFY(WriteBytes(page, "mine"));
        QCOMPARE(Run({"--web-page"}).Status, 1);
        QCOMPARE(ReadBytes(page), "mine");
        const auto others = QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(!(QFile::permissions(folder.filePath("program/ftpOptions.ini")) & others));
        static const QRegularExpression display("loaded library.*(xcb|wayland)");
        QVERIFY(once.Errors.contains("offscreen") && !display.match(once.Errors).hasMatch());
        QVERIFY(QDir(folder.filePath("program")).removeRecursively());
        QCOMPARE(Run({"--check"}).Status, 2);
        QCOMPARE(Run({"--once"}).Status, 2);
    }

    void AsAServiceAndASecondTime() {
        NotifySocket manager(folder.filePath("notify"));
        QProcess service;
        Begin(service, {"/autostarter"},
              {{"NOTIFY_SOCKET", QFile::decodeName(manager.Path)}, {"WATCHDOG_USEC", "100000"}});
        QTRY_VERIFY_WITH_TIMEOUT(manager.Heard("WATCHDOG=1", 3), patience);
        QVERIFY(manager.Heard("READY=1") && manager.Heard("STATUS=publishing"));
        const Result second = Run({});
        QCOMPARE(second.Status, 0);
        QVERIFY(second.Errors.contains("without a window"));
        QCOMPARE(Run({"--once"}).Status, 1);
        QCOMPARE(Run({"--check"}).Status, 0);
        service.kill();
        QVERIFY(service.waitForFinished(patience));
        QCOMPARE(Run({"--once"}).Status, 0);
        const QString log = QString::fromUtf8(ReadBytes(folder.filePath("program/stillpost.log")));
        QCOMPARE(log.count("publishing to "), 2);
    }

    // As soon as it listens to the system, long before its windows are there.
    void EndedWhileItStarts() {
        VirtualScreen screen;
        if (screen.Variables().isEmpty()) QSKIP("Xvfb is not installed");
        QProcess process;
        Begin(process, {}, screen.Variables());
        QVERIFY(process.waitForStarted());
        const auto listens = [&process] {
            const auto status = ReadBytes(QString("/proc/%1/status").arg(process.processId()));
            const qsizetype caught = status.indexOf("SigCgt:");
            return status.mid(caught + 8, 16).toULongLong(nullptr, 16) >> (SIGTERM - 1) & 1;
        };
        const QDeadlineTimer end(patience);
        while (!listens() && !end.hasExpired()) QTest::qSleep(1);
        process.terminate();
        QVERIFY(process.waitForFinished(patience) && process.exitCode() == 0);
    }

    // Where somebody may never press its button.
    void EndedWhileItShowsAMessage() {
        VirtualScreen screen;
        if (screen.Variables().isEmpty()) QSKIP("Xvfb is not installed");
        QProcess first;
        QProcess second;
        QMap<QProcess*, QByteArray> said;
        const auto says = [&said](QProcess& process, const char* text) {
            return (said[&process] += process.readAllStandardError()).contains(text);
        };
        Begin(first, {"--verbose", "/autostarter"});
        QTRY_VERIFY_WITH_TIMEOUT(says(first, "state: "), patience);
        Begin(second, {}, screen.Variables());
        QTRY_VERIFY_WITH_TIMEOUT(says(second, "without a window"), patience);
        second.terminate();
        QVERIFY(second.waitForFinished(patience) && second.exitCode() == 0);
        first.terminate();
        QVERIFY(first.waitForFinished(patience) && first.exitCode() == 0);
    }

    // It waits without a word that misleads, and goes on by itself.
    void NoFilesLeft() {
        const QString picture = folder.filePath("program/public/pw.jpg");
        QFile::remove(picture);
        const ProfileEntry slow{"Einstellungen", "Framerate", "2000"};
        QVERIFY(WriteSettings(folder.filePath("program/ftpOptions.ini"), {slow}) != 0);
        QProcess process;
        Begin(process, {"--verbose", "/autostarter"});
        QByteArray said;
        const auto says = [&](const char* text) {
            said += process.readAllStandardError();
            return said.contains(text);
        };
        QTRY_VERIFY_WITH_TIMEOUT(says("state: waiting for the next picture"), patience);
        {
            const FewFiles none(0, process.processId());
            QTRY_VERIFY_WITH_TIMEOUT(says("try again: Too many files are open"), patience);
        }
        QVERIFY(!QFile::exists(picture) && !said.contains("Cannot"));
        QTRY_COMPARE_WITH_TIMEOUT(QImage(picture).size(), QSize(64, 48), patience);
        process.terminate();
        QVERIFY(process.waitForFinished(patience) && process.exitCode() == 0);
    }

    // As by a power cut: the next start goes on at once, with its settings and with new pictures.
    void KilledAtAnyStep() {
        SystemClock clock;
        ScriptedFtpServer server(clock);
        const QString settings = folder.filePath("program/ftpOptions.ini");
        const auto set = [](const char* key, const QString& value) {
            return ProfileEntry{"Einstellungen", QString::fromLatin1(key), value};
        };
        QVERIFY(WriteSettings(settings, {set("Server", "127.0.0.1"), set("Verzeichnis", {}),
                                         set("User", "cam"), set("PW", "secret"),
                                         set("Delete", "1"), set("Path", "work"),
                                         set("Port", QString::number(server.Port()))}) != 0);
        const QByteArray before = ReadBytes(settings);
        const QByteArray stale("what was being made or sent");
        const QDir work(folder.filePath("program/work"));
        // A login takes some real seconds each time.
        const bool all = qEnvironmentVariableIsSet("STILLPOST_SOAK_DAYS");
        const QString steps = QString::fromLatin1(
            all ? "CONNECT PASS TYPE PORT STOR DONE DELE RNFR RNTO" : "STOR DELE RNTO");
        for (const QString& step : steps.split(u' ')) {
            QProcess process;
            server.Files.clear();
            server.Whim = [&](const QString& verb) {
                if (server.Files.values().contains(stale)) qFatal("sent what is left");
                const bool login = step == "CONNECT" || step == "PASS";
                if (verb != step || (!login && server.Files.isEmpty())) return FtpFault();
                process.kill();
                return FtpFault{.Verb = verb, .Silent = true};
            };
            Begin(process, {"/autostarter"});
            QTRY_COMPARE_WITH_TIMEOUT(process.error(), QProcess::Crashed, patience);
            server.DropControl();
            QCOMPARE(ReadBytes(settings), before);
            for (const char* name : {"1pw.jpg", "pw.jpg", "1pw.bmp"})
                QVERIFY(WriteBytes(work.filePath(QString::fromLatin1(name)), stale));
        }
        server.Whim = nullptr;
        QProcess once;
        Begin(once, {"--once"});
        QTRY_VERIFY_WITH_TIMEOUT(once.state() == QProcess::NotRunning, patience);
        QCOMPARE(once.exitCode(), 0);
        QCOMPARE(QImage::fromData(server.Files.value("pw.jpg"), "JPG").size(), QSize(64, 48));
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "test_program.moc"
