#include "core/command_line.h"
#include "core/console_display.h"
#include "core/folder_claim.h"
#include "core/megabytes.h"
#include "core/outage_watch.h"
#include "core/program_folder.h"
#include "core/run_state.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/test_clock.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

class TestCoreParts : public QObject {
    Q_OBJECT

  private slots:
    void FolderIsChosen_data() {
        const Rows<QString, QString, QString, QString> row;  // the last: what is chosen
        row("requested and new", "new/r", "exe", "u", "new/r");
        row("requested, but impossible", "file/r", "exe", "u", "");
        row("executable's own", "", "exe", "u", "exe");
        row("user's", "", "gone", "u/new", "u/new");
        row("no folder possible", "", "gone", "file/u", "");
        // Nobody can create files there, not even with every permission.
        if (QFileInfo("/proc/self").isDir())
            row("executable in a file system of the system", "", "/proc/self", "u", "u");
    }
    void FolderIsChosen() {
        const auto [requested, executable, user, chosen] =
            Row<QString, QString, QString, QString>();
        const QTemporaryDir base;
        Make(base.filePath("exe/stillpost"));
        Make(base.filePath("file"));
        const auto below = [&base](const QString& name) {
            return name.isEmpty() || name.startsWith(u'/') ? name : base.filePath(name);
        };
        const auto folder =
            ProgramFolder::Choose({below(requested), below(executable), below(user)});
        QCOMPARE(folder.has_value(), !chosen.isEmpty());
        if (!folder) return;
        QCOMPARE(folder->Folder, QDir::toNativeSeparators(below(chosen)));
        QVERIFY(QFileInfo(folder->Folder).isDir());
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(base.filePath("exe")).entryList(everything), QStringList("stillpost"));
    }

    void SharedFilesAreFound() {
        const QTemporaryDir base;
        const auto folder =
            ProgramFolder::Choose({base.filePath("program"), base.filePath("bin"), QString()});
        QVERIFY(folder.has_value());
        QCOMPARE(folder->FindShared("Click.wav"), QString());
        // Each place goes before the one that was looked at so far.
        for (const char* place :
             {"share/stillpost/click.WAV", "bin/Click.wav", "program/CLICK.wav"}) {
            const QString file = base.filePath(QString::fromLatin1(place));
            Make(file);
            QCOMPARE(folder->FindShared("Click.wav"), QDir::toNativeSeparators(file));
        }
    }

    void CommandLine_data() {
        Rows<QString, QString, bool, bool, QString>(
            {{"", "", false, false, ""},
             {"/autostarter --verbose", "", true, true, ""},
             {"--folder d --verbose /autostarter", "d", true, true, ""},
             {"--folder=d=e", "d=e", false, false, ""},
             {"--folder", "", false, false, "--folder needs"},
             {"--folder /autostarter", "", false, false, "--folder needs"},
             {"--folder a --folder b", "", false, false, "twice"},
             {"--check --once", "", false, false, "one thing"},
             {"-x", "", false, false, "-x"},
             {"--film 2026-11-22 2026-11-22 f", "", false, false, ""},
             {"--film 2026-11-22T06:30 2026-11-23T06:30 f", "", false, false, ""},
             {"--film 2026-11-22T06:30 2026-11-22T06:30 f", "", false, false, "--film needs"},
             {"--film 2026-02-29 2026-11-22 f", "", false, false, "--film needs"},
             {"--film 2026-11-22T0630 2026-11-22 f", "", false, false, "--film needs"},
             {"--film 2026-11-22 2026-11-22", "", false, false, "--film needs"}});
    }
    void CommandLine() {
        const auto [line, folder, verbose, autostarter, fault] =
            Row<QString, QString, bool, bool, QString>();
        const auto parsed = ::CommandLine::Parse(line.split(u' ', Qt::SkipEmptyParts));
        QCOMPARE(parsed.Fault.isEmpty(), fault.isEmpty());
        QVERIFY2(parsed.Fault.contains(fault), qPrintable(parsed.Fault));
        if (!fault.isEmpty()) return;
        QCOMPARE(parsed.Folder, folder);
        QCOMPARE(parsed.Verbose, verbose);
        QCOMPARE(parsed.Autostarter, autostarter);
        QVERIFY(!parsed.Help && !parsed.Version);
        QCOMPARE(parsed.Film.has_value(), line.startsWith("--film"));
        if (parsed.Film) QCOMPARE(parsed.Film->From.secsTo(parsed.Film->To), qint64{24} * 3600);
    }

    // What another program, or none at all, has left in the folder.
    void OneProgramHasAFolder_data() {
        const Rows<QByteArray, bool, bool> row;  // the lock file; it is held; this one has it
        const QByteArray own = QByteArray::number(QCoreApplication::applicationPid());
        row("none", "", false, true);
        row("another program works", "", true, false);
        row("crashed", "999999999\nstillpost\n" + host + "\n", false, true);
        row("power cut", "\n", false, true);
        row("crashed, another has its number", own + "\ntest_core_parts\n" + host + "\n", false,
            true);
        row("crashed, the computer had another name", "1\nstillpost\nelsewhere\n", false, true);
    }
    void OneProgramHasAFolder() {
        const auto [left, held, mine] = Row<QByteArray, bool, bool>();
        const QTemporaryDir folder;
        QVERIFY(left.isEmpty() || WriteBytes(folder.filePath("stillpost.lock"), left));
        FolderClaim other(folder.path());
        if (held) QVERIFY(other.Take());
        FolderClaim claim(folder.path());
        QCOMPARE(claim.Take(), mine);
        QCOMPARE(claim.Other().Process, QCoreApplication::applicationPid());
        QVERIFY(!FolderClaim(folder.filePath(".")).Take());
    }

    void AskedToShowItself_data() {
        Rows<bool, bool>({{true, false}, {false, false}, {true, true}});  // visible; file or folder
    }
    void AskedToShowItself() {
        const auto [visible, readOnly] = Row<bool, bool>();
        const QTemporaryDir base;
        // No lock can be made below a file.
        Make(base.filePath("file"));
        const QString folder = readOnly ? base.filePath("file") : base.path();
        TestClock clock;
        FolderClaim claim(folder);
        QVERIFY(claim.Take());
        claim.Listen(clock, visible);
        const QSignalSpy shows(&claim, &FolderClaim::ShowWanted);
        auto answer = FolderClaim::Answer::None;
        bool taken = true;
        std::atomic<bool> answered = false;
        qputenv("XDG_ACTIVATION_TOKEN", "a token");
        const std::jthread second([&] {
            FolderClaim again(folder);
            taken = again.Take();
            answer = again.Ask();
            answered = true;
        });
        QTRY_VERIFY(answered);
        qunsetenv("XDG_ACTIVATION_TOKEN");
        QVERIFY(!taken);
        QCOMPARE(answer, visible ? FolderClaim::Answer::Shown : FolderClaim::Answer::Hidden);
        QCOMPARE(shows.count(), 1);
        QCOMPARE(shows[0][0].toByteArray(), "a token");
    }

    void MegabytesAreTheSumOfRoundedPictures() {
        MegabyteCounter counter;
        for (const qint64 size : {5242, 15'728, 1'294'139'392}) counter.Add(size);
        QCOMPARE(counter.Text(), "1234.2");
    }

    void ConsoleLinesCarryTheTime() {
        TestClock clock;
        clock.SetNow(QDateTime(QDate(2026, 3, 4), QTime(9, 5, 1, 20)));
        QStringList printed;
        ConsoleDisplay console(clock, [&printed](const QString& line) { printed << line; });
        console.ShowStatus("Send File");
        console.ShowStatus({});
        console.ShowOnline(true);
        console.ShowOnline(true);
        console.LogReply("220-Hello\r\n220 you");
        console.LogState("sending");
        const QStringList expected{"09:05:01.020 -- Send File", "09:05:01.020 -- online",
                                   "09:05:01.020 <- 220-Hello", "09:05:01.020 <- 220 you",
                                   "09:05:01.020 -- state: sending"};
        QCOMPARE(printed, expected);
    }

    void AnOutageIsToldOnce() {
        TestClock time(0);
        StatusDisplay nobody;
        RunStatus run(time, nobody);
        const OutageWatch watch(time, run);
        const QSignalSpy began(&watch, &OutageWatch::Began);
        const QSignalSpy ended(&watch, &OutageWatch::Ended);
        const auto fails = [&](int minutes) {
            run.Enter(RunState::Connecting);
            run.Enter(RunState::WaitingToRetry, QString("no server"));
            time.Advance(minutes * 60'000);
        };
        fails(5);
        fails(4);
        QCOMPARE(began.count(), 0);
        fails(1);
        fails(60);
        QCOMPARE(began.count(), 1);
        QCOMPARE(ended.count(), 0);
        run.Enter(RunState::Waiting);
        QCOMPARE(ended.count(), 1);
        fails(9);
        run.Enter(RunState::Paused);
        fails(30);
        run.Resume();
        QCOMPARE(run.Reason(), "no server");
        fails(9);
        QCOMPARE(began.count(), 1);
        fails(1);
        QCOMPARE(began.count(), 2);
        run.Enter(RunState::Stopped);
        run.Enter(RunState::Waiting);
        QVERIFY2(ended.count() == 1, "who has stopped it knows");
    }

  private:
    const QByteArray host = QSysInfo::machineHostName().toUtf8();

    static void Make(const QString& path) {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QVERIFY(WriteBytes(path, ""));
    }
};

QTEST_GUILESS_MAIN(TestCoreParts)
#include "test_core_parts.moc"
