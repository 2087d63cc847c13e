#include "base/paths.h"
#include "support/cycle_fixture.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QImage>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <set>

namespace {

constexpr int tenMinutes = 600'000;

// A run that has published its first picture.
struct RunningCycle : CycleFixture {
    RunningCycle() {
        if (!Begin()) qFatal("no first picture");
    }
};

}  // namespace

class TestUploadCycle : public QObject {
    Q_OBJECT

  private slots:
    void EveryTickPublishesAnotherPicture() {
        CycleFixture f;
        f.Cycle.Start();
        std::set<QByteArray> seen;
        for (int i = 1; i <= 5; ++i) {
            QVERIFY(f.RunUntilPublished(i));
            const QByteArray picture = f.Server.Files.value("pw.jpg");
            QVERIFY(!QImage::fromData(picture, "JPG").isNull());
            QVERIFY2(seen.insert(picture).second, "an old picture was published again");
            QVERIFY(!QFile::exists(f.State.WorkFile("1pw.jpg")));
            QCOMPARE(ReadBytes(f.State.Published->File), picture);
            QVERIFY(f.Run.ThisRun.Published);
        }
        f.Camera.Plugged = false;
        // As when it could not be removed.
        QVERIFY(WriteBytes(f.State.WorkFile("1pw.jpg"), f.Server.Files.value("pw.jpg")));
        f.Time.Advance(20'000);
        QCOMPARE(f.Server.DataConnections, 5);  // nothing is sent twice
        QCOMPARE(f.Display.Statuses.last(), "Pulled out");
        f.Camera.Plugged = true;
        QVERIFY(f.RunUntilPublished(6));
        QCOMPARE(f.Server.Connections, 1);
        QVERIFY(f.Display.Counters.contains("Pic: 6"));
        QCOMPARE(f.Display.Statuses.last(), "wait...");
        QCOMPARE(f.Display.Uploads.last(), 0);
    }

    void LocalModeNeedsNoServer() {
        CycleFixture f;
        QVERIFY(QDir(f.Folder.path()).mkdir("web"));
        f.System.Online.Set(false);
        f.GoLocal("web/");
        f.Cycle.Start();
        QCOMPARE(f.Display.Statuses.last(), "Save Picture Local");
        QVERIFY(f.RunUntilPublished(3));
        // A second time it would be written under this name.
        QVERIFY(QDir(f.Folder.path()).mkdir("web/pw.jpg.part"));
        f.State.Values.Delete = true;
        QVERIFY(f.RunUntilPublished(5));
        QVERIFY(!QImage(f.Folder.filePath("web/pw.jpg")).isNull());
        QCOMPARE(QDir(f.Folder.filePath("web")).entryList(QDir::Files), QStringList("pw.jpg"));
        QCOMPARE(f.Server.Connections, 0);
        f.Camera.Plugged = false;
        const QString last = f.Display.Counters.last();
        f.Time.Advance(5000);
        QCOMPARE(f.Display.Counters.last(), last);
    }

    void LocalFolderThatCannotBeWritten_data() {
        const Rows<QString, QString, QString, TroubleKind> row;
        using enum TroubleKind;
        row("missing", "missing/", "", "Cannot write %1/missing/pw.jpg", LocalFolder);
        row("not set", "", "", "No folder for the pictures: Verzeichnis is empty", LocalFolder);
        row("no room for the bitmap", "", "full/", "Cannot write %1/full/1pw.bmp", WorkFolder);
    }
    void LocalFolderThatCannotBeWritten() {
        const auto [folder, work, status, kind] = Row<QString, QString, QString, TroubleKind>();
        CycleFixture f;
        const QString usual = f.State.Values.WorkPath;
        if (!work.isEmpty()) f.State.Values.WorkPath = f.Folder.filePath(work);
        if (!work.isEmpty()) QVERIFY(QDir(f.Folder.path()).mkpath(work + "1pw.bmp.part"));
        f.GoLocal(work.isEmpty() ? folder : "./");
        f.Cycle.Start();
        f.Time.Advance(5000);
        QCOMPARE(f.Published(), 0);
        QCOMPARE(f.Display.Statuses.last(),
                 status.contains(u'%') ? status.arg(f.Folder.path()) : status);
        QVERIFY(f.Run.Failing() && f.Run.Ongoing()->Kind == kind);
        f.State.Values.WorkPath = usual;
        QVERIFY2(!QFile::exists("pw.jpg"), "not into the folder that the program was started in");
        QVERIFY(QDir(f.Folder.path()).mkdir("missing"));
        f.GoLocal("missing/");
        QVERIFY2(f.RunUntilPublished(1), "goes on once the folder is there");
        QVERIFY(!f.Run.Failing());
        QCOMPARE(f.Display.Statuses.last(), "Save Picture Local");
    }

    // That the system keeps for the user, until the end of the session.
    void WorksInMemory() {
        const QTemporaryDir memory;
        CycleFixture f;
        const auto settings = [&] { return LoadSettings(f.State.SettingsFile); };
        QString& work = f.State.Values.WorkPath;
        const QString disk = settings().WorkPath;
        QCOMPARE(disk, Paths::Native(f.Folder.path() + "/work/"));
        if (QSysInfo::kernelType() == "winnt") QSKIP("has no such place");
        qputenv("XDG_RUNTIME_DIR", memory.path().toUtf8());
        const auto again = qScopeGuard([] { qputenv("XDG_RUNTIME_DIR", ""); });
        const QString own = work = settings().WorkPath;
        QVERIFY(own.startsWith(memory.path() + "/stillpost-"));
        QVERIFY(f.Begin());
        QVERIFY(QDir(own).removeRecursively());
        QVERIFY2(f.RunUntilPublished(2) && work == own, "made again");
        // No bitmap can be written: none has room.
        QFile::remove(own + "1pw.bmp.part");  // the last one
        QVERIFY(QDir(own).mkdir("1pw.bmp.part"));
        QVERIFY(f.RunUntilPublished(3));
        QCOMPARE(work, disk);
        QCOMPARE(f.Display.Statuses.filter("Cannot write"), QStringList());
        work = own;
        QVERIFY(QDir(own).removeRecursively());
        qputenv("XDG_RUNTIME_DIR", "/gone");
        QVERIFY(f.RunUntilPublished(4));
        QCOMPARE(work, disk);
    }
    void ExtraMinutesAreWaitedOut_data() {
        const Rows<int, int> row;
        row("as set", 2, 2);
        row("shortened meanwhile", 5, 1);
    }
    void ExtraMinutesAreWaitedOut() {
        const auto [minutes, later] = Row<int, int>();
        CycleFixture f(500);
        f.State.Values.Uptime = minutes;
        f.GoLocal("./");
        QVERIFY(f.Begin());
        const qint64 first = f.Time.Milliseconds();
        f.Display.Statuses.clear();
        f.State.Values.Uptime = later;
        f.Apply();
        QVERIFY(f.RunUntilPublished(3));
        QCOMPARE(f.Time.Milliseconds() - first, 2 * (later * 60'000 + 500));
        QCOMPARE(f.Display.Statuses.count("Wait..."), 2 * later);
    }

    // Whatever happens, pictures are taken at full multiples of the interval.
    void OnTheMinute_data() {
        const Rows<QString, int, int, QStringList> row;  // milliseconds, extra minutes; when taken
        row("minutes", "", 60'000, 9, {"10:10:00", "10:20:00", "10:30:00"});
        row("seconds", "", 10'000, 0, {"10:03:20", "10:03:30", "10:03:40"});
        row("a slow server", "slow", 10'000, 0, {"10:03:30", "10:04:00", "10:04:30"});
        row("suspended", "suspend", 60'000, 9, {"10:10:00", "10:50:00"});
        row("clock put on", "set", 60'000, 9, {"10:10:00", "13:20:00"});
        row("does not divide the day", "midnight", 60'000, 6, {"23:55:00", "00:00:00", "00:07:00"});
        row("at once", "due", 60'000, 9, {"10:03:20", "10:10:00"});
    }
    void OnTheMinute() {
        const auto [event, milliseconds, minutes, times] = Row<QString, int, int, QStringList>();
        CycleFixture f(milliseconds);
        f.State.Values.Uptime = minutes;
        f.State.Values.OnTheMinute = true;
        f.Apply();
        const QTime begin = event == "midnight" ? QTime(23, 53, 20) : QTime(10, 3, 20);
        f.Time.SetNow(QDateTime(QDate(2026, 3, 4), begin, Qt::UTC));
        f.GoLocal("./");
        if (event == "slow") {
            f.State.Values.Server = "127.0.0.1";
            f.State.Values.Verzeichnis.clear();
            f.Server.Script = {{.Verb = "DONE", .DelayMilliseconds = 20'500}};
        }
        QStringList taken;
        QObject::connect(&f.Run, &RunStatus::Changed, &f.Run, [&] {
            if (f.Run.Is() == RunState::TakingPicture) taken << f.Time.Now().toString("HH:mm:ss");
        });
        f.Cycle.Start();
        if (event == "due") f.Cycle.MakeDue();
        for (int i = 1; i <= times.size(); ++i) {
            QVERIFY(f.RunUntilPublished(i, 2 * tenMinutes));
            if (i == 1 && event == "suspend") f.Time.Suspend(37 * 60'000);
            if (i == 1 && event == "set") f.Time.SetNow(f.Time.Now().addSecs(3 * 3600 + 300));
        }
        QCOMPARE(taken, times);
    }

    void HistoryFillsFromAnEmptyFolder_data() {
        const Rows<bool, bool, QStringList> row;
        row("rename over", false, false, {});
        row("delete first", true, true, {});
        row("delete first, as the server wants it", false, true, {"saves a turn"});
        row("a server that deletes nothing", false, false, {"532 no\r\n", "deletes nothing"});
    }
    void HistoryFillsFromAnEmptyFolder() {
        const auto [deletes, refuses, said] = Row<bool, bool, QStringList>();
        CycleFixture f(200);
        if (said.size() > 1) f.Server.Script = {Says("DELE", {said.first()})};
        f.State.Values.lastpictures = true;
        f.State.Values.lastpictureanz = 3;
        f.State.Values.Delete = deletes;
        f.Server.RefuseRenameOver = refuses;
        f.Apply();
        f.Cycle.Start();
        QByteArrayList published;
        for (int i = 1; i <= 44; ++i) {
            QVERIFY2(f.RunUntilPublished(i), qPrintable(QString::number(i)));
            published << f.Server.Files.value("pw.jpg");
        }
        QCOMPARE(f.Server.Connections, 1);
        // A shift puts away what the tick before published: the 10th, 21st, 32nd and 43rd picture.
        QCOMPARE(f.Server.Files.value("pw1.jpg"), published.at(42));
        QCOMPARE(f.Server.Files.value("pw2.jpg"), published.at(31));
        QCOMPARE(f.Server.Files.value("pw3.jpg"), published.at(20));
        QCOMPARE(f.Server.Files.size(), 4);
        for (const QString& words : {QString("saves a turn"), QString("deletes nothing")})
            QCOMPARE(f.Display.Statuses.filter(words).size(), said.contains(words) ? 1 : 0);
    }

    void IdleServerCostsNoPicture() {
        CycleFixture f(70'000);
        f.State.Values.lastpictures = true;
        f.State.Values.lastpictureanz = 1;
        f.Cycle.Start();
        for (int i = 1; i <= 12; ++i) {
            QVERIFY(f.RunUntilPublished(i));
            QCOMPARE(f.Camera.Grabs, i);
            f.Server.DropControl();
        }
        QCOMPARE(f.Server.Connections, 12);
        QVERIFY2(f.Server.Files.contains("pw1.jpg"), "the history moves on over such connects");
        QVERIFY2(!f.Display.Statuses.contains("reconnecting ftp"), "no watchdog between pictures");
        QCOMPARE(f.Boxes.Shown, QStringList());
    }

    // Ten minutes from one picture to the next, and the server refuses one: what is published then
    // was taken shortly before, and soon.
    void RefusedPicture_data() {
        const Rows<int, bool> row;
        row("tried again", 4000, true);
        row("taken again", 35'000, true);
        row("no camera any more", 35'000, false);
    }
    void RefusedPicture() {
        const auto [refuses, camera] = Row<int, bool>();
        CycleFixture f(60'000);
        f.State.Values.Uptime = 9;
        QVERIFY(f.Begin());
        f.Server.Script = {Says("STOR", {"451 try later\r\n"})};
        QVERIFY(
            f.Time.RunUntil([&f] { return f.Run.Is() == RunState::WaitingToRetry; }, tenMinutes));
        QVERIFY2(!f.Run.ThisRun.Published && f.Camera.Grabs == 3, "another one is made ready");
        f.Camera.Plugged = camera;
        const auto over = f.Time.Milliseconds() + refuses;
        QVERIFY(f.Time.RunUntil([&] { return f.Time.Milliseconds() >= over; }));
        const auto sent = f.Server.DataConnections;
        f.Server.Script.clear();
        QCOMPARE(f.RunUntilPublished(2, camera ? 25'000 : 2 * tenMinutes), camera);
        QVERIFY(camera || f.Server.DataConnections == sent);
        QCOMPARE(f.Camera.Grabs > 3, camera && refuses > 30'000);
        f.Camera.Plugged = true;
        QVERIFY(f.RunUntilPublished(2, 6000));
        const qint64 published = f.Time.Milliseconds();
        QVERIFY(f.RunUntilPublished(3, 2 * tenMinutes));
        QVERIFY2(f.Time.Milliseconds() - published >= tenMinutes, "no more often than asked");
    }

    void PausesGrow_data() {
        const Rows<QString, QList<int>> row;  // how long until the next connect begins, seconds
        row("server away", "", {4, 9, 10, 20, 40, 80, 160, 300, 300});
        row("login refused", "another", {9, 10, 20, 40, 80, 160, 320, 640, 900, 900});
    }
    void PausesGrow() {
        const auto [password, pauses] = Row<QString, QList<int>>();
        RunningCycle f;
        f.Server.Password = password;
        if (password.isEmpty()) f.Server.StopListening();
        f.Server.DropControl();
        QList<qint64> connects;
        QObject::connect(&f.Run, &RunStatus::Changed, &f.Run, [&] {
            if (f.Run.Is() == RunState::Connecting) connects << f.Time.Milliseconds();
        });
        const auto enough = [&, count = pauses.size()] { return connects.size() > count; };
        QVERIFY(f.Time.RunUntil(enough, 8 * tenMinutes));
        for (qsizetype i = 0; i < pauses.size(); ++i) {
            const qint64 late = connects.at(i + 1) - connects.at(i) - 1000LL * pauses.at(i);
            QVERIFY2(late >= 0 && late <= 1000, qPrintable(QString::number(i)));
        }
        QVERIFY2(f.Time.Milliseconds() - f.Run.Since() > 600'000,
                 "the trouble began with the first try");
        QCOMPARE(f.Boxes.Shown, QStringList());
        QCOMPARE(
            f.Run.Reason().contains("does not accept the user name or the password (530 wrong)"),
            !password.isEmpty());
        f.Server.Password.clear();
        f.Server.ListenAgain();
        f.Cycle.TryAgainAtOnce();  // as when the access data are changed
        QVERIFY(f.RunUntilPublished(3, 20'000));
    }

    void ServerDiesAndComesBack_data() {
        const Rows<QString, int, int> row;  // in which step; seconds away, and until a picture
        const QStringList steps{"USER", "PASS", "CWD",  "TYPE", "PORT",
                                "STOR", "DONE", "DELE", "RNFR", "RNTO"};
        for (const QString& step : steps) {
            row(qPrintable(step), step, 13, 15);
            row(qPrintable(step + " longer"), step, 20, 15);
        }
        row("long", "STOR", 180, 170);
    }
    void ServerDiesAndComesBack() {
        const auto [step, away, most] = Row<QString, int, int>();
        CycleFixture f(60'000);
        f.State.Values.Delete = true;
        f.Server.Script = {Dies(step, 2, away)};
        QVERIFY(f.Begin());
        f.Server.DropControl();
        QVERIFY(f.RunUntilPublished(2));
        const qint64 needed = f.Time.Milliseconds() - f.Server.BackSince;
        QVERIFY2(f.Server.BackSince > 0 && needed <= most * 1000,
                 qPrintable(QString::number(needed)));
        QVERIFY(!QImage::fromData(f.Server.Files.value("pw.jpg"), "JPG").isNull());
    }

    void NobodyThereAtTheStart() {
        CycleFixture f;
        f.Server.StopListening();
        f.Cycle.Start(UploadCycle::Starter::System);
        f.Time.Advance(60'000);
        QCOMPARE(f.Display.States.count("connecting"), 5);  // twice at once
        QCOMPARE(f.Run.Is(), RunState::WaitingToRetry);
        QVERIFY(f.Display.Statuses.last().contains("takes no connection at port"));
        f.Server.ListenAgain();
        QVERIFY(f.RunUntilPublished(1, 60'000));
        QCOMPARE(f.Boxes.Shown, QStringList());
    }
    void SilentLoginEnds() {
        RunningCycle f;
        f.Server.Script = {{.Verb = "PASS", .Occurrence = 2, .Silent = true}};
        f.Server.DropControl();
        QVERIFY(f.RunUntilPublished(2, 140'000));
        QCOMPARE(f.Server.Connections, 3);
    }

    void WakesUp() {
        CycleFixture f(60'000);
        f.State.Values.Uptime = 9;
        QVERIFY(f.Begin());
        f.Time.Suspend(50 * tenMinutes);
        QVERIFY2(f.RunUntilPublished(2, 100), "at once");
        QVERIFY2(!f.RunUntilPublished(3, tenMinutes - 10'000), "and only once");
    }

    void StopEndsTheRun_data() {
        const Rows<QString, RunState, int> row;  // pressed when; what follows at once; published
        row("while connecting", "connecting", RunState::Stopping, 1);
        row("in the first connect", "connecting", RunState::Stopping, 0);
        row("between ticks", "waiting for the next picture", RunState::Stopped, 1);
        row("while sending", "sending", RunState::Stopping, 2);
        row("while going online", "going online", RunState::Stopping, 1);
    }
    void StopEndsTheRun() {
        const auto [moment, state, published] = Row<QString, RunState, int>();
        CycleFixture f;
        f.Server.Script = {{.Verb = "DONE", .DelayMilliseconds = 3000}};
        QVERIFY(published == 0 || f.Begin());
        if (moment == "going online") f.System.Online.Set(false);
        if (moment == "connecting") f.Server.DropControl();
        qint64 pressed = 0;
        Timer press(f.Time, 100);
        QObject::connect(&press, &Timer::Tick, &f.Cycle, [&, moment = moment, state = state] {
            if (f.Display.States.last() != moment) return;
            press.SetEnabled(false);
            pressed = f.Time.Milliseconds();
            f.Cycle.Stop();
            QCOMPARE(f.Run.Is(), state);
            QVERIFY(RunButtons::For(f.Run).Start && !RunButtons::For(f.Run).Stop);
        });
        press.SetEnabled(true);
        if (published == 0) f.Cycle.Start();
        const auto stopped = [&f] { return f.Run.Is() == RunState::Stopped; };
        QVERIFY(f.Time.RunUntil(stopped, 100'000));
        QVERIFY(f.Time.Milliseconds() - pressed < (published == 2 ? 5000 : 1000));
        QCOMPARE(f.Published(), published);
        f.System.Online.Set(true, OnlineState::Lan);
        f.Server.DropControl();
        f.Time.Advance(100'000);
        QCOMPARE(f.Display.Statuses.last(), "stopped");
        QCOMPARE(f.Server.Connections, published == 0 ? 0 : 1);
        f.Cycle.Start();
        QVERIFY(f.RunUntilPublished(published + 1));
    }

    void PauseKeepsTheConnection() {
        RunningCycle f;
        f.Server.Script = {{.Verb = "DONE", .DelayMilliseconds = 3000}};
        Timer press(f.Time, 100);
        QObject::connect(&press, &Timer::Tick, &f.Cycle, [&f, &press] {
            if (f.Run.Is() != RunState::Sending) return;
            press.SetEnabled(false);
            f.Cycle.Pause();
            f.Display.Statuses.clear();
        });
        press.SetEnabled(true);
        Timer setBack(f.Time, 1000);
        QObject::connect(&setBack, &Timer::Tick, &f.Cycle, [&f, noon = f.Time.Now()] {
            f.Time.SetNow(noon);  // somebody else's doing, which is nothing to the program
        });
        setBack.SetEnabled(true);
        f.Time.Advance(20'000);
        QVERIFY2(f.Published() == 2, "the picture that is on its way arrives, no other is made");
        QVERIFY(f.Run.Is() == RunState::Paused && f.Run.Step() == RunState::Waiting);
        const QStringList last = f.Display.Statuses.last(2);
        QVERIFY2(last.contains("Pause") && last.contains(QString()), "blinking");
        f.Cycle.Pause();
        QVERIFY(f.RunUntilPublished(3));
        QCOMPARE(f.Server.Connections, 1);
    }

    void WatchdogEndsAStuckTransfer() {
        RunningCycle f;
        // Late to connect and then silent: 28 s in the control and 45 s in the step are more than
        // the watchdog allows.
        f.Server.Script = {{.Verb = "STOR", .DelayMilliseconds = 28'000},
                           {.Verb = "DONE", .Silent = true}};
        const qint64 start = f.Time.Milliseconds();
        QVERIFY(f.Time.RunUntil([&f] { return f.Display.Statuses.contains("reconnecting ftp"); }));
        const qint64 after = f.Time.Milliseconds() - start;
        // 61 ticks, and the connect that follows at once.
        QVERIFY2(after >= 60'000 && after <= 70'000, qPrintable(QString::number(after)));
        f.Server.Script.clear();
        QVERIFY(f.RunUntilPublished(2));
        QCOMPARE(f.Server.Connections, 2);
    }

    void EndsAtAnyMoment_data() {
        const Rows<FtpFault, QString> row;
        row("connecting", {.Verb = "CONNECT", .Silent = true}, "Connecting...");
        row("sending", {.Verb = "DONE", .Silent = true}, "Send File");
        row("no data connection", {.Verb = "STOR", .NoDataConnection = true}, "Send File");
        row("renaming", {.Verb = "RNTO", .Silent = true}, "Rename File");
    }
    void EndsAtAnyMoment() {
        const auto [fault, moment] = Row<FtpFault, QString>();
        CycleFixture f;
        f.Server.Script = {fault};
        qint64 closedAt = -1;
        // Started from an event, as the button does, so that the test goes on inside its waits.
        QMetaObject::invokeMethod(
            &f.Cycle, [&f] { f.Cycle.Start(); }, Qt::QueuedConnection);
        Timer look(f.Time, 500);
        QObject::connect(&look, &Timer::Tick, &f.Cycle, [&, moment = moment] {
            if (closedAt >= 0 || !f.Display.Statuses.contains(moment)) return;
            closedAt = f.Time.Milliseconds();
            f.Cycle.Unload();
            f.Wait.Close();
        });
        look.SetEnabled(true);
        QVERIFY(f.Time.RunUntil([&] { return closedAt >= 0 && f.Wait.Depth() == 0; }, 60'000));
        QVERIFY(f.Time.Milliseconds() - closedAt < 2000);
        QVERIFY(!f.Run.Running());
    }
};

QTEST_GUILESS_MAIN(TestUploadCycle)
#include "test_upload_cycle.moc"
