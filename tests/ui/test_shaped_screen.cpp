#include "support/data_rows.h"
#include "ui/skin/shaped_window.h"

#include <QApplication>
#include <QPainter>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// Shapes as a real X server shows them: this program runs itself once more on a server of its own,
// with a shaped window before a backdrop, and looks at the pixels of the screen.

namespace {

constexpr QRgb backdrop = 0xFF00C000;
constexpr QRgb cut = 0xFFFF00FF;
constexpr QRgb drawing = 0xFF203050;
constexpr QPoint place(40, 30);
constexpr QSize size(160, 120);

// A disc with a square hole.
QImage Picture() {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(cut);
    QPainter painter(&picture);
    painter.setBrush(QColor::fromRgb(drawing));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(1, 1, size.width() - 2, size.height() - 2);
    painter.fillRect(70, 50, 20, 20, QColor::fromRgb(cut));
    return picture;
}

// In the second process: shows the windows and saves what the screen looks like.
int ShowAndSave(const QString& file) {
    QWidget behind(nullptr, Qt::BypassWindowManagerHint);
    behind.setPalette(QColor::fromRgb(backdrop));
    behind.resize(QGuiApplication::primaryScreen()->size());
    behind.show();
    ShapedWindow window;
    window.setWindowFlag(Qt::BypassWindowManagerHint);
    window.SetBackground(Picture());
    window.move(place);
    window.show();
    if (!QTest::qWaitForWindowExposed(&behind) || !QTest::qWaitForWindowExposed(&window)) return 1;
    window.raise();
    QCoreApplication::processEvents();
    return QGuiApplication::primaryScreen()->grabWindow(0).save(file, "PNG") ? 0 : 1;
}

class XServer {
  public:
    [[nodiscard]] bool Start() {
        process.start("Xvfb",
                      {"-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
        if (!process.waitForReadyRead()) return false;
        display = ":" + QString::fromLatin1(process.readLine().trimmed());
        return true;
    }
    ~XServer() {
        process.kill();
        process.waitForFinished();
    }
    [[nodiscard]] QString Display() const { return display; }

  private:
    QProcess process;
    QString display;
};

}  // namespace

class TestShapedScreen : public QObject {
    Q_OBJECT

  private slots:
    void OnlyTheDrawingIsSeen_data() {
        const Rows<int> row;
        row("one to one", 1);
        row("twice as large", 2);
    }

    void OnlyTheDrawingIsSeen() {
        const auto [scale] = Row<int>();
        if (QStandardPaths::findExecutable("Xvfb").isEmpty()) QSKIP("Xvfb is not installed");
        XServer server;
        QVERIFY(server.Start());
        const QTemporaryDir folder;
        const QString file = folder.filePath("screen.png");
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", server.Display());
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("QT_SCALE_FACTOR", QString::number(scale));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(QCoreApplication::applicationFilePath(), {"--show", file});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 0);

        const QImage screen(file);
        QCOMPARE(screen.size(), QSize(640, 480));
        const QImage picture = Picture();
        int faults = 0;
        for (int y = 0; y < size.height() * scale; ++y)
            for (int x = 0; x < size.width() * scale; ++x) {
                const QRgb seen = screen.pixel(place * scale + QPoint(x, y));
                const QRgb drawn = picture.pixel(x / scale, y / scale);
                if (seen != (drawn == cut ? backdrop : drawing)) ++faults;
            }
        QCOMPARE(faults, 0);
    }
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--show") return ShowAndSave(arguments.value(2));
    TestShapedScreen test;
    return QTest::qExec(&test, arguments);
}

#include "test_shaped_screen.moc"
