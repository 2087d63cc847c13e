#include "core/offline_picture.h"
#include "support/cycle_fixture.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QtTest>

namespace {

QByteArray Plain(const QColor& colour, const char* format, QSize size = {32, 24}) {
    QImage image(size, QImage::Format_RGB888);
    image.fill(colour);
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

// Whether the file is a JPEG with this colour in its middle, but for the losses of the encoding.
bool Shows(const QByteArray& jpeg, const QColor& colour) {
    const QImage image = QImage::fromData(jpeg, "JPG");
    if (image.isNull()) return false;
    const QColor seen = image.pixelColor(image.width() / 2, image.height() / 2);
    return qAbs(seen.red() - colour.red()) < 12 && qAbs(seen.green() - colour.green()) < 12 &&
           qAbs(seen.blue() - colour.blue()) < 12;
}

// The first entry of the quantisation table is 6 at quality 80.
bool HasQuality80(const QByteArray& jpeg) {
    return jpeg.at(jpeg.indexOf("\xFF\xDB") + 5) == 6;
}

class OfflineFixture : public CycleFixture {
  public:
    OfflineFixture() {
        QDir(Folder.path()).mkpath("Offline");
        QDir(Folder.path()).mkpath("web");
        Write("Offline/Offline.jpg", File);
        Configure();
        Cycle.SetOfflinePicture(&Offline);
    }
    ~OfflineFixture() { Cycle.SetOfflinePicture(nullptr); }
    Q_DISABLE_COPY_MOVE(OfflineFixture)

    void Write(const QString& name, const QByteArray& bytes) const {
        QVERIFY(WriteBytes(Folder.filePath(name), bytes));
    }
    void Configure(const QByteArray& more = {}) const {
        Write("ftpOptions.ini", "[Einstellungen]\nOfflinePic=1\nOverlay=5\n" + more);
    }
    void GoLocal() {
        State.Values.Server = "Local";
        State.Values.Verzeichnis = Folder.filePath("web/");
        Apply();
    }
    [[nodiscard]] QByteArray Public() const { return Server.Files.value("pw.jpg"); }

    const QByteArray File = Plain(Qt::blue, "JPG");
    OfflinePicture Offline{{Wait, Ftp, Net, Transaction, Pictures, Picture, Display, State}};
};

}  // namespace

class TestOfflinePicture : public QObject {
    Q_OBJECT

  private slots:
    void SendsTheFileAsItIs() {
        OfflineFixture f;
        QVERIFY(f.Begin());
        f.Server.Commands.clear();
        f.Display.Statuses.clear();
        f.Server.Script = {{.Verb = "DONE", .DelayMilliseconds = 20'000}};
        f.Cycle.Stop();
        QCOMPARE(f.Public(), f.File);
        QCOMPARE(f.CommandsAfterLogin(),
                 QStringList({"TYPE I", "PORT", "STOR 1pw.jpg", "RNFR 1pw.jpg", "RNTO pw.jpg"}));
        QStringList shown = f.Display.Statuses;
        shown.removeIf([](const QString& text) { return text.endsWith(" Bytes"); });
        QCOMPARE(shown,
                 QStringList({"stopped", "create Offline.jpg", "sending Offline - Picture",
                              "Send File", "Rename File", "Offline Picture done", "Offline"}));
        QVERIFY2(f.Display.LabelSeconds.contains(26),
                 "Time Out: N s while the server is waited for");
        QCOMPARE(f.Run.Is(), RunState::Offline);
        f.Time.Advance(100'000);
        QCOMPARE(f.Public(), f.File);
        QCOMPARE(f.Published(), 1);
    }

    void MakesAJpegOfEverythingElse() {
        OfflineFixture f;
        f.Picture.JPGQuality = "30";
        f.Write("Offline/Offline.jpg", Plain(Qt::blue, "BMP"));
        QVERIFY(f.Begin());
        f.Cycle.Stop();
        QVERIFY(Shows(f.Public(), Qt::blue));
        QVERIFY(HasQuality80(f.Public()));
        QCOMPARE(f.Display.Statuses.last(), "Offline");
    }

    void BlendsWithTheCamera() {
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\nOfflinefile=off.png\n");
        f.Write("Offline/OFF.png", Plain(QColor(0, 0, 100), "PNG"));
        f.Picture.JPGQuality = "30";
        QVERIFY(f.Begin());
        const int grabs = f.Camera.Grabs;
        f.Display.Statuses.clear();
        f.Cycle.Stop();
        QCOMPARE(f.Camera.Grabs, grabs + 1);
        const QColor camera = QColor::fromHsv(f.Camera.Grabs * 37 % 360, 255, 255);
        QVERIFY(Shows(f.Public(),
                      QColor(camera.red() / 2, camera.green() / 2, (camera.blue() + 100) / 2)));
        QVERIFY(HasQuality80(f.Public()));
        QCOMPARE(f.Picture.JPGQuality, "30");
        f.Display.Statuses.removeAll("processing Offline-Picture");
        QCOMPARE(
            f.Display.Statuses.mid(0, 6),
            QStringList({"stopped", "create Offline.jpg", "create Offline - Picture",
                         "sending Offline - Picture", "sending Offline - Picture", "Send File"}));
        QVERIFY(!QFile::exists(f.State.WorkFile("1pw.jpg")));
    }

    void WithoutCameraTheFileAlone() {
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\n");
        QVERIFY(f.Begin());
        f.Camera.Plugged = false;
        f.Cycle.Stop();
        QCOMPARE(f.Public(), f.File);
    }

    void LocalMode_data() {
        const Rows<QByteArray, QByteArray> row;
        row("JPEG", QByteArray(), QByteArray("JPG"));
        row("filter", QByteArray("UseOfflineFilter=1\n"), QByteArray("PNG"));
    }
    void LocalMode() {
        const auto [settings, format] = Row<QByteArray, QByteArray>();
        OfflineFixture f;
        f.Configure(settings);
        f.GoLocal();
        f.System.Online.Set(false);
        const QByteArray file = Plain(Qt::black, format.constData());
        f.Write("Offline/Offline.jpg", file);
        QVERIFY(f.Begin());
        f.Cycle.Stop();
        const QColor camera = QColor::fromHsv(f.Camera.Grabs * 37 % 360, 255, 255);
        const bool filter = !settings.isEmpty();
        QVERIFY(Shows(ReadBytes(f.Folder.filePath("web/pw.jpg")),
                      filter ? camera.darker(200) : QColor(Qt::black)));
        if (format == "JPG") QCOMPARE(ReadBytes(f.Folder.filePath("web/pw.jpg")), file);
        QCOMPARE(QDir(f.Folder.filePath("web")).entryList(QDir::Files), QStringList("pw.jpg"));
        QCOMPARE(f.Server.Connections, 0);
        QCOMPARE(f.Display.Statuses.last(), "Offline");
        QVERIFY(f.Transaction.Flags.ConnectionDown);
    }

    void KeepsTheLastPicture_data() {
        const Rows<QString, QString> row;
        row("switched off", "off", "stopped");
        row("missing", "missing", "Offline file not found !");
        row("cut off", "cut off", "Offline file cannot be read");
        row("leads out", "outside", "Offline file not found !");
        row("server refuses", "refused", "Offline Picture not sent");
        row("local folder gone", "folder", "Cannot write ");
        row("no local folder", "no folder", "No folder for the pictures");
    }
    void KeepsTheLastPicture() {
        const auto [fault, status] = Row<QString, QString>();
        OfflineFixture f;
        const bool local = fault.contains("folder");
        if (local) f.GoLocal();
        QVERIFY(f.Begin());
        const QByteArray last = f.Public();
        const auto sent = f.Server.Commands.count("STOR 1pw.jpg");
        if (fault == "off") f.Write("ftpOptions.ini", "[Einstellungen]\nOfflinePic=0\n");
        if (fault == "missing") QVERIFY(QFile::remove(f.Folder.filePath("Offline/Offline.jpg")));
        if (fault == "cut off") f.Write("Offline/Offline.jpg", f.File.chopped(100));
        if (fault == "outside") f.Configure("Offlinefile=../web/secret.jpg\n");
        f.Write("web/secret.jpg", f.File);
        if (fault == "refused") f.Server.Script = {{.Verb = "STOR", .Chunks = {"553 no\r\n"}}};
        if (local) QVERIFY(QDir(f.Folder.filePath("web")).removeRecursively());
        if (fault == "no folder") {
            f.State.Values.Verzeichnis.clear();
            f.Apply();
        }
        f.Cycle.Stop();
        QVERIFY2(f.Display.Statuses.last().startsWith(status),
                 qPrintable(f.Display.Statuses.last()));
        QCOMPARE(f.Public(), last);
        if (fault != "refused") QCOMPARE(f.Server.Commands.count("STOR 1pw.jpg"), sent);
        QVERIFY(RunButtons::For(f.Run).Start && !RunButtons::For(f.Run).Stop);
        QCOMPARE(f.Boxes.Shown, QStringList());
        QVERIFY(!QFile::exists("pw.jpg"));
    }

    void ConnectsOnce_data() {
        const Rows<QString> row;
        row("idle connection closed", "dropped");
        row("closed when it is used", "closes");
    }
    void ConnectsOnce() {
        const auto [line] = Row<QString>();
        OfflineFixture f;
        QVERIFY(f.Begin());
        if (line == "dropped") f.Server.DropControl();
        if (line == "closes")
            f.Server.Script = {
                {.Verb = "STOR", .Occurrence = 2, .Chunks = {""}, .CloseControl = true}};
        f.Time.Advance(100);
        f.Cycle.Stop();
        QCOMPARE(f.Public(), f.File);
        QCOMPARE(f.Server.Connections, 2);
        QCOMPARE(f.Display.Statuses.last(), "Offline");
        QVERIFY(RunButtons::For(f.Run).Start && !RunButtons::For(f.Run).Stop);
    }

    void GivesUpOffline_data() {
        const Rows<bool> row;
        row("no network", false);
        row("server away", true);
    }
    void GivesUpOffline() {
        const auto [network] = Row<bool>();
        OfflineFixture f;
        QVERIFY(f.Begin());
        f.Server.StopListening();
        f.Server.DropControl();
        f.System.Online.Set(network, network ? OnlineState::Lan : OnlineState::Links());
        const qint64 start = f.Time.Milliseconds();
        f.Cycle.Stop();
        QVERIFY(f.Time.Milliseconds() - start < 120'000);
        QCOMPARE(f.Display.Statuses.last(), "No connection: Offline Picture not sent");
        QCOMPARE(f.Boxes.Shown, QStringList());
        QVERIFY(RunButtons::For(f.Run).Start && !RunButtons::For(f.Run).Stop);
        f.Server.ListenAgain();
        f.System.Online.Set(true, OnlineState::Lan);
        f.Time.Advance(200'000);
        QCOMPARE(f.Server.Connections, 1);
    }

    void StopStartStop_data() {
        const Rows<QString, bool> row;
        row("goes on", "stop start", false);
        row("stopped after all", "stop start stop", true);
        row("stopped twice", "stop stop", true);
    }
    void StopStartStop() {
        const auto [presses, offline] = Row<QString, bool>();
        OfflineFixture f;
        f.Server.Script = {{.Verb = "DONE", .DelayMilliseconds = 3000}};
        QVERIFY(f.Begin());
        // All within one tick.
        Timer look(f.Time, 100);
        QObject::connect(&look, &Timer::Tick, &f.Cycle, [&] {
            if (f.Server.DataConnections < 2) return;
            look.SetEnabled(false);
            for (const QString& press : presses.split(u' '))
                press == "stop" ? f.Cycle.Stop() : f.Cycle.Start();
        });
        look.SetEnabled(true);
        f.Time.Advance(60'000);
        QCOMPARE(f.Display.Statuses.contains("Offline"), offline);
        QCOMPARE(f.Run.Running(), !offline);
        if (!offline) return;
        QCOMPARE(f.Published(), 2);
        QCOMPARE(f.Public(), f.File);
        QCOMPARE(f.Server.Commands.count("STOR 1pw.jpg"), 3);
        QCOMPARE(f.Display.Statuses.last(), "Offline");
    }

    void StartWaitsForTheEnd_data() {
        const Rows<QString> row;
        row("blending", "processing Offline-Picture");
        row("sending", "Send File");
    }
    void StartWaitsForTheEnd() {
        const auto [moment] = Row<QString>();
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\n");
        QVERIFY(f.Begin());
        f.Display.Statuses.clear();
        bool pressed = false;
        const std::function<void()> look = [&] {
            if (f.Display.Statuses.contains(moment)) {
                f.Cycle.Start();
                pressed = true;
                QVERIFY(!f.Run.Running());
                return;
            }
            QMetaObject::invokeMethod(&f.Cycle, look, Qt::QueuedConnection);
        };
        look();
        f.Cycle.Stop();
        QVERIFY(pressed);
        QVERIFY(f.Display.Statuses.contains("Offline Picture done"));
        QVERIFY(f.Run.Running());
        QVERIFY(f.RunUntilPublished(3));
    }

    void NextRunBeginsWithTheCamera() {
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\n");
        QVERIFY(f.Begin());
        f.Server.Script = {{.Verb = "STOR", .Chunks = {"451 try later\r\n"}}};
        f.Cycle.Stop();
        QCOMPARE(f.Display.Statuses.last(), "Offline Picture not sent");
        f.Server.Script.clear();
        f.Cycle.Start();
        QVERIFY(f.RunUntilPublished(2));
        QVERIFY(Shows(f.Public(), QColor::fromHsv(f.Camera.Grabs * 37 % 360, 255, 255)));
        QVERIFY2(!f.Display.Statuses.contains("reconnecting ftp"), "the watchdog counts anew");
    }

    void EndsAtAnyMoment_data() {
        const Rows<FtpFault, QString> row;
        row("blending", FtpFault{}, "processing Offline-Picture");
        row("sending", FtpFault{.Verb = "STOR", .Occurrence = 2, .NoDataConnection = true},
            "Send File");
        row("renaming", FtpFault{.Verb = "RNTO", .Occurrence = 2, .Silent = true}, "Rename File");
        row("connecting", FtpFault{.Verb = "CONNECT", .Occurrence = 2, .Silent = true},
            "Connecting...");
    }
    void EndsAtAnyMoment() {
        const auto [fault, moment] = Row<FtpFault, QString>();
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\n");
        f.Write("Offline/Offline.jpg", Plain(Qt::blue, "JPG", {400, 300}));
        f.Server.Script = {fault};
        QVERIFY(f.Begin());
        const QByteArray last = f.Public();
        f.Display.Statuses.clear();
        if (moment == "Connecting...") f.Server.DropControl();
        qint64 closedAt = -1;
        const auto look = [&] {
            if (closedAt >= 0 || !f.Display.Statuses.contains(moment)) return;
            closedAt = f.Time.Milliseconds();
            f.Cycle.Unload();
            f.Wait.Close();
        };
        Timer often(f.Time, 100);
        QObject::connect(&often, &Timer::Tick, &f.Cycle, look);
        often.SetEnabled(true);
        // The clock stands still during the blend.
        QTimer still;
        QObject::connect(&still, &QTimer::timeout, &f.Cycle, look);
        if (moment.startsWith("processing")) still.start(0);
        f.Cycle.Stop();
        QVERIFY(closedAt >= 0);
        QVERIFY(f.Time.Milliseconds() - closedAt < 2000);
        QVERIFY(!f.Display.Statuses.contains("Offline Picture done"));
        QVERIFY(!f.Run.Running() && !f.Run.Busy());
        if (moment != "Rename File") QCOMPARE(f.Public(), last);
    }
};

QTEST_GUILESS_MAIN(TestOfflinePicture)
#include "test_offline_picture.moc"
