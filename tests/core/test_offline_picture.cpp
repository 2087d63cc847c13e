#include "core/offline_picture.h"
#include "core/run_record.h"
#include "picture/decoded_jpeg.h"
#include "support/cycle_fixture.h"
#include "support/data_rows.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTimeZone>
#include <QtTest>

namespace {

QByteArray Plain(const QColor& colour, const char* format, QSize size = {32, 24}) {
    QImage image(size, QImage::Format_RGB888);
    image.fill(colour);
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
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
    // It is that time in Berlin, on the eve of summer time, and pictures are published by day.
    void KeepHours(const QTime& now) {
        Time.SetNow(QDateTime(QDate(2026, 3, 28), now, QTimeZone("Europe/Berlin")));
        State.Values.Hours = "06:00-22:00";
        State.Values.Framerate = 60'000;
        Apply();
        Cycle.ApplyHours();
    }
    [[nodiscard]] bool RunUntilState(RunState state, qint64 limit = 600'000) {
        return Time.RunUntil([&] { return Run.Is() == state; }, limit);
    }
    [[nodiscard]] qsizetype Sent() const { return Server.Commands.count("STOR 1pw.jpg"); }
    [[nodiscard]] QByteArray Public() const { return Server.Files.value("pw.jpg"); }

    const QByteArray File = Plain(Qt::blue, "JPG");
    OfflinePicture Offline{{Wait, Net, Transaction, Pictures, Picture, Display, State}};
};

}  // namespace

class TestOfflinePicture : public QObject {
    Q_OBJECT

  private slots:
    // What becomes public: the file itself, or a JPEG of quality 80 that shows some colour.
    void Publishes_data() {
        const Rows<QByteArray, QByteArray, bool, bool> row;
        row("the file as it is", "", "JPG", false, false);
        row("a JPEG of everything else", "", "BMP", true, false);
        row("a blend with the camera", "UseOfflineFilter=1\n", "PNG", true, false);
        row("the file alone without a camera", "UseOfflineFilter=1\n", "JPG", false, false);
        row("locally as it is", "", "JPG", false, true);
        row("locally a blend", "UseOfflineFilter=1\n", "PNG", true, true);
    }
    void Publishes() {
        const auto [settings, format, encodes, local] = Row<QByteArray, QByteArray, bool, bool>();
        OfflineFixture f;
        f.Configure(settings + "Offlinefile=off.any\n");
        const QColor blue(0, 0, 100);
        // Narrower than the frame of the camera and higher.
        const QByteArray file = Plain(blue, format.constData(), {16, 40});
        f.Write("Offline/OFF.any", file);
        f.State.Values.JPGQuality = 30;
        if (local) f.GoLocal();
        if (local) f.System.Online.Set(false);
        QVERIFY(f.Begin());
        f.Camera.Plugged = encodes;
        f.Cycle.Stop();
        f.Time.Advance(100'000);
        const DecodedJpeg seen{local ? ReadBytes(f.Folder.filePath("web/pw.jpg")) : f.Public()};
        if (encodes) {
            const QColor camera = QColor::fromHsv(f.Camera.Grabs * 37 % 360, 255, 255);
            const bool blends = !settings.isEmpty();
            QCOMPARE(f.Camera.Grabs, blends ? 2 : 1);
            QVERIFY(seen.Shows(
                4, 12,
                blends ? QColor(camera.red() / 2, camera.green() / 2, (camera.blue() + 100) / 2)
                       : blue));
            QVERIFY(!blends || seen.Shows(28, 12, camera));
            QVERIFY(seen.HasQuality80());
        } else {
            QCOMPARE(seen.Bytes, file);
        }
        QCOMPARE(ReadBytes(f.State.Published->File), seen.Bytes);
        QCOMPARE(f.State.Values.JPGQuality, 30);
        QVERIFY(!QFile::exists(f.State.WorkFile("1pw.jpg")));
        QCOMPARE(f.Display.Statuses.last(), "Offline");
        QCOMPARE(f.Run.Is(), RunState::Offline);
        f.Time.Advance(1'000);
        QVERIFY(!f.Display.Online);
        QCOMPARE(f.Transaction.Flags.ConnectionDown, local);
        QCOMPARE(f.Server.Connections, local ? 0 : 1);
    }

    // A file that cannot be used gives way to the program's own, or to plain grey.
    void AnotherTakesItsPlace_data() {
        const Rows<QString, QString, bool> row;
        row("missing", "no.jpg", "Offline file not found !", true);
        row("cut off", "half.jpg", "Offline file cannot be read", true);
        row("leads out", "../web/secret.jpg", "Offline file not found !", true);
        row("the program's own cut off", "Offline.jpg", "Offline file cannot be read", false);
        row("blended", "half.jpg\nUseOfflineFilter=1", "Offline file cannot be read", false);
    }
    void AnotherTakesItsPlace() {
        const auto [file, status, own] = Row<QString, QString, bool>();
        OfflineFixture f;
        f.Configure("Offlinefile=" + file.toUtf8() + "\n");
        f.Write("web/secret.jpg", Plain(Qt::red, "JPG"));
        f.Write("Offline/half.jpg", f.File.chopped(100));
        if (!own) f.Write("Offline/Offline.jpg", f.File.chopped(100));
        QVERIFY(f.Begin());
        f.Cycle.Stop();
        QVERIFY(f.Display.Statuses.contains(status));
        QCOMPARE(f.Public() == f.File, own);
        QCOMPARE(f.Display.Statuses.last(), "Offline");
        const bool grey = DecodedJpeg{f.Public()}.Shows(4, 4, Qt::gray);
        QCOMPARE(grey, !own && !file.contains("Filter"));
    }

    // 48 million pixels; with the filter as many of them as the camera needs.
    void SendsPhotographs_data() {
        const Rows<bool> row;
        row("as they are", false);
        row("blended", true);
    }
    void SendsPhotographs() {
        const auto [blends] = Row<bool>();
        OfflineFixture f;
        if (blends) f.Configure("UseOfflineFilter=1\n");
        const QByteArray photograph = Plain(Qt::white, "JPG", {8000, 6000});
        f.Write("Offline/Offline.jpg", photograph);
        QVERIFY(f.Begin());
        f.Cycle.Stop();
        QCOMPARE(f.Public() == photograph, !blends);
        const DecodedJpeg seen{f.Public()};
        QVERIFY(!blends || seen.Picture.pixelColor(30, 20).lightness() > 180);
        QCOMPARE(f.Display.Statuses.last(), "Offline");
    }

    void KeepsTheLastPicture_data() {
        const Rows<QString, QString> row;
        row("switched off", "off", "stopped");
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

    // It logs in once more where the connection is gone; where that fails the last picture stays.
    void ConnectsOnce_data() {
        const Rows<QString, bool> row;
        row("idle connection closed", "dropped", true);
        row("closed when it is used", "closes", true);
        row("no network", "dropped offline", false);
        row("server away", "dropped away", false);
        row("login never answered", "dropped silent", true);
    }
    void ConnectsOnce() {
        const auto [line, published] = Row<QString, bool>();
        OfflineFixture f;
        QVERIFY(f.Begin());
        f.Transaction.HistoryCounter = 7;
        if (line.contains("away")) f.Server.StopListening();
        if (line.contains("silent"))
            f.Server.Script = {{.Verb = "PASS", .Occurrence = 2, .Silent = true}};
        if (line.contains("dropped")) f.Server.DropControl();
        if (line.contains("offline")) f.System.Online.Set(false);
        if (line == "closes")
            f.Server.Script = {
                {.Verb = "STOR", .Occurrence = 2, .Chunks = {""}, .CloseControl = true}};
        f.Time.Advance(100);
        const qint64 start = f.Time.Milliseconds();
        f.Cycle.Stop();
        QVERIFY(f.Time.Milliseconds() - start < 140'000);
        QCOMPARE(f.Public() == f.File, published);
        QCOMPARE(f.Display.Statuses.last(),
                 published ? QString("Offline") : "No connection: Offline Picture not sent");
        QCOMPARE(f.Boxes.Shown, QStringList());
        QVERIFY(RunButtons::For(f.Run).Start && !RunButtons::For(f.Run).Stop);
        QCOMPARE(f.Transaction.HistoryCounter, 7);
        if (line.contains("away")) f.Server.ListenAgain();
        f.System.Online.Set(true, OnlineState::Lan);
        f.Time.Advance(200'000);
        QCOMPARE(f.Server.Connections, line.contains("silent") ? 3 : published ? 2 : 1);
    }

    void CameraIsGone_data() {
        const Rows<QByteArray, int> row;  // minutes until visitors see the offline picture
        row("pulled out", "", 10);
        row("frozen", "FrozenAfter=5\n", 10);
        row("known to be frozen later", "FrozenAfter=20\n", 20);
    }
    void CameraIsGone() {
        const auto [settings, minutes] = Row<QByteArray, int>();
        OfflineFixture f;
        f.Configure(settings + "UseOfflineFilter=1\n");
        f.State.Values.lastpictures = true;
        f.State.Values.OfflineAfter = 10;
        f.State.Values.Framerate = 5'000;
        f.Apply();
        QVERIFY(f.Begin());
        f.Transaction.HistoryCounter = 9;  // the second picture from now on moves it on
        (settings.isEmpty() ? f.Camera.Plugged : f.Camera.Frozen) = !settings.isEmpty();
        const qint64 begin = f.Time.Milliseconds();
        const auto shown = [&f] { return f.Public() == f.File; };
        QVERIFY(f.Time.RunUntil(shown, 2'000'000));
        const qint64 off = f.Time.Milliseconds() - begin - minutes * 60'000;
        QVERIFY2(off >= -1000 && off < 12'000, qPrintable(QString::number(off)));
        const auto sent = f.Sent();
        f.Time.Advance(900'000);
        QVERIFY2(shown() && f.Sent() == sent, "once");
        QVERIFY(f.Run.Failing() && f.Run.Ongoing()->Kind == TroubleKind::Camera);
        QVERIFY(f.Run.Reason().contains("since") || settings.isEmpty());
        QVERIFY(f.Run.Reason().endsWith("; visitors see the offline picture"));
        f.Server.Files.remove("pw1.jpg");
        f.Camera.Plugged = true;
        f.Camera.Frozen = false;
        const int before = f.Published();
        QVERIFY(f.RunUntilPublished(before + 1, 10'000) && !shown());
        QVERIFY(f.RunUntilPublished(before + 2, 20'000));
        QVERIFY(f.Server.Files.contains("pw1.jpg") || !settings.isEmpty());
        QVERIFY(f.Server.Files["pw1.jpg"] != f.File);
    }

    // Tried again less and less often, until it is there.
    void RefusedInPlaceOfTheCamera() {
        OfflineFixture f;
        f.State.Values.OfflineAfter = 1;
        f.State.Values.Framerate = 5'000;
        f.Apply();
        QVERIFY(f.Begin());
        f.Camera.Plugged = false;
        f.Server.Script = {{.Verb = "STOR", .Chunks = {"553 no\r\n"}}};
        const auto sent = f.Sent();
        f.Time.Advance(1'200'000);
        QVERIFY2(f.Sent() > sent + 10 && f.Sent() < sent + 30,
                 qPrintable(QString::number(f.Sent() - sent)));
        f.Server.Script.clear();
        QVERIFY(f.Time.RunUntil([&f] { return f.Public() == f.File; }, 310'000));
        f.Camera.Plugged = true;
        QVERIFY(f.RunUntilPublished(2, 6'000));
    }

    void NothingHappensDuringAPause_data() {
        const Rows<QTime, bool, bool> row;  // begin; camera there, offline picture after the pause
        row("camera gone", {12, 0}, false, false);
        row("hours end", {21, 50}, true, true);
    }
    void NothingHappensDuringAPause() {
        const auto [now, camera, after] = Row<QTime, bool, bool>();
        OfflineFixture f;
        f.KeepHours(now);
        f.State.Values.OfflineAfter = 10;
        QVERIFY(f.Begin());
        f.Camera.Plugged = camera;
        f.Time.Advance(300'000);
        f.Cycle.Pause();
        f.Time.Advance(1'200'000);
        QVERIFY(f.Public() != f.File);
        f.Cycle.Pause();
        f.Time.Advance(500'000);
        QCOMPARE(f.Public() == f.File, after);
    }

    void HoursEndAndBegin_data() {
        const Rows<QByteArray, bool, bool> row;
        row("the offline picture", "", false, false);
        row("a blend with the camera", "UseOfflineFilter=1\n", false, false);
        row("the last picture", "", true, false);
        row("in a folder", "", false, true);
    }
    void HoursEndAndBegin() {
        const auto [settings, last, local] = Row<QByteArray, bool, bool>();
        OfflineFixture f;
        f.Configure(settings);
        if (local) f.GoLocal();
        f.State.Values.OutsideLast = last;
        f.KeepHours({21, 50});
        RunRecord record(f.Time, f.Run, f.Cycle, f.Folder.filePath("day.bin"));
        QVERIFY(f.Begin());
        QVERIFY(f.RunUntilState(RunState::OutsideHours, 700'000));
        QCOMPARE(f.Time.Now().time().toString("HH:mm"), "22:00");
        const int published = f.Published();
        const int grabs = f.Camera.Grabs;
        const auto seen = [&] {
            return local ? ReadBytes(f.Folder.filePath("web/pw.jpg")) : f.Public();
        };
        QCOMPARE(seen() == f.File, !last && settings.isEmpty());
        QCOMPARE(grabs, published + (settings.isEmpty() ? 0 : 1));
        f.Time.Advance(1'000);
        QVERIFY(!f.Transaction.IsConnected() && !f.Display.Online);
        QCOMPARE(f.Display.Statuses.last(), "Outside the hours, next picture Su 06:00");
        f.Transaction.HistoryCounter = 5;
        f.Time.Suspend(6 * 3'600'000);
        f.Time.Advance(900'000);
        QVERIFY(f.Camera.Grabs == grabs && f.Published() == published);
        QCOMPARE(record.Day().At(record.Day().Last()).State, MinuteState::OutsideHours);
        QVERIFY(!f.Run.Failing() && f.Run.Closed());
        QVERIFY(f.RunUntilPublished(published + 1, 2 * 3'600'000));
        QVERIFY(f.Time.Now().time() < QTime(6, 0, 10));
        QVERIFY(seen() != f.File && !f.Run.Closed());
        QCOMPARE(f.Transaction.HistoryCounter, 5);
        QCOMPARE(f.Server.Connections, local ? 0 : 2);
    }

    void ServerIsAwayWhenTheyEnd() {
        OfflineFixture f;
        f.KeepHours({21, 58});
        QVERIFY(f.Begin());
        f.Server.StopListening();
        f.Server.DropControl();
        f.Time.Advance(1'800'000);
        QVERIFY(f.Run.Failing() && f.Run.Is() == RunState::WaitingToRetry);
        QVERIFY(f.Run.ThisRun.Again.Next() > f.Time.Milliseconds());
        f.Server.ListenAgain();
        QVERIFY(f.RunUntilState(RunState::OutsideHours, 310'000));
        QVERIFY(f.Public() == f.File && !f.Run.Failing());
    }

    // Nobody is there to read a message.
    void ServerIsAwayWhenTheyBegin() {
        OfflineFixture f;
        f.State.Values.OutsideLast = true;
        f.KeepHours({5, 58});
        f.Server.StopListening();
        f.Cycle.Start();
        f.Time.Advance(600'000);
        QVERIFY(f.Run.Failing());
        QCOMPARE(f.Boxes.Shown, QStringList());
        f.Server.ListenAgain();
        QVERIFY(f.RunUntilPublished(1, 310'000));
    }

    void OperatorAtNight_data() {
        const Rows<QString, RunState, bool> row;  // state in the morning; whether pictures came
        row("stops", "stop", RunState::Offline, false);
        row("pauses", "pause", RunState::Paused, false);
        row("pauses and goes on", "pause pause", RunState::Waiting, true);
        row("stops and starts", "stop start", RunState::Waiting, true);
    }
    void OperatorAtNight() {
        const auto [presses, state, goesOn] = Row<QString, RunState, bool>();
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\n");
        f.KeepHours({5, 30});
        f.Cycle.Start();
        QCOMPARE(f.Run.Is(), RunState::OutsideHours);
        QVERIFY2(f.Public() == f.File && f.Camera.Grabs == 0, "without the camera's light");
        for (const QString& press : presses.split(u' ')) {
            f.Time.Advance(600'000);
            press == "stop" ? f.Cycle.Stop() : press == "pause" ? f.Cycle.Pause() : f.Cycle.Start();
        }
        f.Time.Advance(3'600'000);
        QCOMPARE(f.Published() > 30, goesOn);
        QVERIFY(f.RunUntilState(state, 1'000));
    }

    void ClockIsSet() {
        OfflineFixture f;
        f.KeepHours({23, 0});
        f.Cycle.Start();
        f.Time.SetNow(f.Time.Now().addYears(1).addSecs(12 * 3600));
        QVERIFY(f.RunUntilPublished(1, 3'000));
        f.Time.SetNow(f.Time.Now().addYears(-2).addSecs(12 * 3600));
        QVERIFY(f.RunUntilState(RunState::OutsideHours, 3'000));
    }

    void HoursThatCannotBeRead() {
        OfflineFixture f;
        f.State.Values.Hours = "mo 25:00-26:00";
        f.Cycle.ApplyHours();
        QVERIFY(f.Display.Statuses.last().startsWith("Hours: at character 4, \"25:00-26:00\" is"));
        QVERIFY(f.Begin());
    }

    // Pressed within the second tick, or while the offline picture is on its way.
    void PressedAgain_data() {
        const Rows<QString, bool, QString> row;
        row("goes on", "stop start", true, "waiting for the next picture");
        row("stopped after all", "stop start stop", true, "offline");
        row("stopped twice", "stop stop", true, "offline");
        row("started while it is sent", "start", false, "waiting for the next picture");
        row("and stopped", "start stop", false, "offline");
    }
    void PressedAgain() {
        const auto [presses, inTick, last] = Row<QString, bool, QString>();
        OfflineFixture f;
        f.Server.Script = {{.Verb = "DONE", .DelayMilliseconds = 3000}};
        QVERIFY(f.Begin());
        f.State.Values.Framerate = 60'000;
        Timer look(f.Time, 100);
        QObject::connect(&look, &Timer::Tick, &f.Cycle, [&] {
            if (f.Server.DataConnections < 2) return;
            look.SetEnabled(false);
            for (const QString& press : presses.split(u' '))
                press == "stop" ? f.Cycle.Stop() : f.Cycle.Start();
            QVERIFY(!f.Run.Running());
        });
        look.SetEnabled(true);
        if (!inTick) f.Cycle.Stop();
        f.Time.Advance(20'000);
        QCOMPARE(f.Display.States.last(), last);
        QCOMPARE(f.Published(), inTick ? 2 : 1);
        QCOMPARE(f.Public() == f.File, last == "offline" || !inTick);
        QCOMPARE(f.Display.Statuses.count("create Offline.jpg"), f.Public() == f.File ? 1 : 0);
    }

    void StartDoesNotWaitForASilentLogin() {
        OfflineFixture f;
        QVERIFY(f.Begin());
        f.Server.Script = {{.Verb = "PASS", .Occurrence = 2, .Silent = true}};
        f.Server.DropControl();
        Timer press(f.Time, 20'000);
        QObject::connect(&press, &Timer::Tick, &f.Cycle, [&f] { f.Cycle.Start(); });
        press.SetEnabled(true);
        const qint64 start = f.Time.Milliseconds();
        f.Cycle.Stop();
        QVERIFY(f.Time.Milliseconds() - start < 30'000);
        QVERIFY(f.RunUntilPublished(2) && f.Public() != f.File);
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
        const QColor camera = QColor::fromHsv(f.Camera.Grabs * 37 % 360, 255, 255);
        QVERIFY(DecodedJpeg{f.Public()}.Shows(16, 12, camera));
        QVERIFY2(!f.Display.Statuses.contains("reconnecting ftp"), "the watchdog counts anew");
    }

    void EndsWithTheProgram() {
        OfflineFixture f;
        f.Configure("UseOfflineFilter=1\n");
        f.Write("Offline/Offline.jpg", Plain(Qt::blue, "JPG", {400, 300}));
        QVERIFY(f.Begin());
        const QByteArray last = f.Public();
        // The clock stands still during the blend.
        QTimer still;
        QObject::connect(&still, &QTimer::timeout, &f.Cycle, [&] {
            if (f.Wait.Closing() || !f.Display.Statuses.contains("processing Offline-Picture"))
                return;
            f.Cycle.Unload();
            f.Wait.Close();
        });
        still.start(0);
        f.Cycle.Stop();
        QVERIFY(f.Wait.Closing());
        QVERIFY(!f.Display.Statuses.contains("Offline Picture done"));
        QVERIFY(!f.Run.Running() && !f.Run.Busy());
        QCOMPARE(f.Public(), last);
    }
};

QTEST_GUILESS_MAIN(TestOfflinePicture)
#include "test_offline_picture.moc"
