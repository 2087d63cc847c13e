#include "base/detached_thread.h"
#include "core/log/run_log.h"
#include "core/offline_picture.h"
#include "core/run_record.h"
#include "platform/program_start.h"
#include "support/cycle_fixture.h"
#include "support/few_files.h"
#include "support/file_bytes.h"
#include "support/full_disk.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QImage>
#include <QSemaphore>
#include <QTest>
#include <QTimeZone>

#include <memory>
#include <random>

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int minute = 60'000;
constexpr int mostAge = 30'000;  // of a picture when it is sent, milliseconds

QImage Grey() {
    QImage picture(8, 8, QImage::Format_RGB888);
    picture.fill(Qt::gray);
    return picture;
}

// What a process must not have more of after months.
struct Footprint {
    qint64 Heap = 0;      // bytes
    qint64 Resident = 0;  // bytes
    qsizetype Descriptors = 0;
    qsizetype Threads = 0;
    QStringList Files;  // of the program folder, without the archive's pictures and old logs

    static Footprint Now(const QString& folder) {
        malloc_trim(0);
        Footprint now;
        now.Heap = static_cast<qint64>(mallinfo2().uordblks + mallinfo2().hblkhd);
        now.Resident =
            ReadBytes("/proc/self/statm").split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
        now.Descriptors = QDir("/proc/self/fd").count();
        now.Threads = QDir("/proc/self/task").count();
        QDirIterator all(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString name = QDir(folder).relativeFilePath(all.next());
            if (!name.startsWith("archive/") && !name.startsWith("stillpost.log."))
                now.Files << name;
        }
        now.Files.sort();
        return now;
    }
};

// Has the pool start as many threads as are ever busy at a time. They stay, and only how busy the
// machine is decides on which day two pieces of work meet for the first time.
void StartCrowd() {
    struct Place {
        QSemaphore Here;
        QSemaphore Leave;
    };
    // Who leaves last still takes from it when this has returned.
    const auto place = std::make_shared<Place>();
    constexpr int most = 4;
    for (int i = 0; i < most; ++i) {
        StartDetached([place] {
            place->Here.release();
            place->Leave.acquire();
        });
    }
    place->Here.acquire(most);
    place->Leave.release(most);
}

// A run with all that goes on beside it, at a picture a minute, and what a visitor sees of it.
class Soak : public CycleFixture {
  public:
    Soak() : CycleFixture(minute) {
        Camera.Sizes = 80;
        State.Values.OfflineAfter = 10;
        State.Values.LogFile = true;
        State.Values.Hours = "05:00-23:30";
        State.Values.Archive = State.Values.ArchiveIso = true;
        State.Values.ArchivePath = Folder.filePath("archive/");
        State.Values.ArchiveDays = 1;
        (void)WriteBytes(State.SettingsFile,
                         "[Einstellungen]\nOverlay=5\nOfflinePic=1\nFrozenAfter=5\n");
        const QDir folder(Folder.path());
        if (!folder.mkpath("Offline") || !folder.mkpath("archive")) qFatal("no folders");
        (void)Grey().save(Folder.filePath("Offline/Offline.jpg"), "JPG");
        Cycle.SetOfflinePicture(&Offline);
        Time.SetNow(QDateTime(QDate(2026, 3, 4), QTime(12, 0), QTimeZone("Europe/Berlin")));
        Cycle.ApplyHours();
        Server.Whim = [this](const QString& verb) {
            Look();
            NoteGrab();
            if (verb == "TYPE") sending = Time.Milliseconds();
            return Bad && OneIn(60) ? AnyFault(verb) : FtpFault();
        };
    }
    ~Soak() { Cycle.SetOfflinePicture(nullptr); }
    Q_DISABLE_COPY_MOVE(Soak)

    bool Bad = false;    // the server fails now and then
    QString Seen;        // what a visitor must not see
    qint64 Looks = 0;    // at another picture than before
    qint64 Offs = 0;     // of which the offline picture
    bool Stays = false;  // there is a picture all the time

    [[nodiscard]] int UpTo(int most) { return std::uniform_int_distribution(0, most)(random); }
    [[nodiscard]] bool OneIn(int many) { return UpTo(many - 1) == 0; }

    // A visitor looks at the page.
    void Look() {
        const QByteArray now = Server.Files.value("pw.jpg");
        if (now.isEmpty() && Stays) Seen = "no picture";
        if (now.isEmpty() || now == last) return;
        last = now;
        ++Looks;
        const QSize size = QImage::fromData(now, "JPG").size();
        if (!now.endsWith("\xff\xd9") || size.isEmpty()) Seen = "a torn picture";
        if (size == Grey().size()) {
            ++Offs;
            return;
        }
        const int round = Camera.Sizes * Camera.Sizes;
        const int grab = Camera.Grabs - (Camera.Grabs - Camera.GrabOf(size) + round) % round;
        if (grab <= newest) Seen = "an older picture than before";
        if (grab != frozen && sending - grabbed.value(grab) > mostAge) Seen = "an old picture";
        newest = grab;
    }

    void Pass(qint64 milliseconds) {
        Time.Advance(milliseconds);
        // Outside an event loop nobody else does so, and the list of what is to be deleted, which
        // never shrinks, gets another 256 kB on a busy day.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // An hour in which something besides the server goes wrong for a while.
    void BadHour() {
        const int length = 1 + UpTo(40);
        Bad = true;
        const auto pass = [this](int minutes) {
            while (--minutes >= 0) Pass(minute);
        };
        pass(15);  // by then the server is back
        switch (UpTo(7)) {
            case 0:
                Camera.Plugged = false;
                break;
            case 1:
                NoteGrab();
                frozen = ++Camera.Grabs;
                Camera.Frozen = true;
                break;
            case 2:
                System.Online.Set(false, OnlineState::Lan);
                break;
            case 3:
                full = std::make_unique<FullDisk>(UpTo(2000));
                break;
            case 4:
                Time.SetNow(Time.Now().addSecs(UpTo(2 * 86'400) - 86'400));
                break;
            case 5:
                Time.Suspend(qint64{length} * 10 * minute);
                break;
            case 6:
                // Enough for the server, which is part of this process.
                few = std::make_unique<FewFiles>(8 + UpTo(11));
                break;
            default:
                Server.GoAway(length * 60);
                break;
        }
        pass(length);
        Camera.Plugged = true;
        Camera.Frozen = false;
        System.Online.Set(true, OnlineState::Lan);
        full.reset();
        few.reset();
        pass(45 - length);
        Forget();
    }

    // All is well from this noon on.
    void CalmDown(const QDate& day) {
        Bad = false;
        Time.SetNow(QDateTime(day, QTime(12, 0), QTimeZone("Europe/Berlin")));
        Cycle.ApplyHours();
        Pass(20 * minute);
    }

    // What nobody but a test keeps.
    void Forget() {
        Server.Commands = {};  // clear() would keep the room of the longest
        Display = RecordingDisplay();
        Boxes.Shown = {};
        grabbed.removeIf([this](const auto& each) { return each.key() < newest; });
    }

  private:
    void NoteGrab() {
        if (!grabbed.contains(Camera.Grabs)) grabbed[Camera.Grabs] = Time.Milliseconds();
    }

    [[nodiscard]] FtpFault AnyFault(const QString& verb) {
        const QList<FtpFault> faults{Says(verb, {"451 no\r\n"}),
                                     Says(verb, {"553-no\r\n", "553 no\r\n"}),
                                     Says(verb, {"421 bye\r\n"}),
                                     Closes(verb),
                                     Dies(verb, 0, 1 + UpTo(600)),
                                     {.Verb = verb, .Silent = true},
                                     {.Verb = verb, .DelayMilliseconds = UpTo(70'000)},
                                     {.Verb = verb, .NoDataConnection = true},
                                     {.Verb = verb, .DataBytes = UpTo(600)}};
        // A server that refuses to rename has the picture deleted first from then on.
        const int first = verb == "RNTO" ? 2 : 0;
        return faults.at(first + UpTo(static_cast<int>(faults.size()) - 1 - first));
    }

    // Set, another course of things.
    std::mt19937 random{static_cast<unsigned>(qEnvironmentVariableIntValue("STILLPOST_SOAK_SEED"))};
    OfflinePicture Offline{{Wait, Net, Transaction, Pictures, Picture, Display, State}};
    RunRecord Record{Time, Run, Cycle, Folder.filePath("last24hours.bin")};
    RunLog Log{{Time, Run, State, Folder.path()}};
    std::unique_ptr<FullDisk> full;
    std::unique_ptr<FewFiles> few;
    QMap<int, qint64> grabbed;  // when
    qint64 sending = 0;         // since then
    QByteArray last;
    int newest = 0;
    int frozen = 0;  // the picture that the camera has shown for longer
};

}  // namespace

// A run of days in which everything fails now and then: a visitor sees whole pictures only, each of
// them new, and one a minute as long as all is well; and nothing grows. STILLPOST_SOAK_DAYS says
// how many days.
class TestSoak : public QObject {
    Q_OBJECT

  private slots:
    void Days() {
        const int days = qEnvironmentVariableIntValue("STILLPOST_SOAK_DAYS");
        ProgramStart::ShareOneHeap();
        StartCrowd();
        Soak f;
        QVERIFY(f.Begin());
        Footprint before;
        for (int day = 1; day <= std::max(days, 1); ++day) {
            f.Stays = false;
            f.State.Values.Delete = f.State.Values.lastpictures = day % 2 != 0;
            for (int hour = 0; hour < 20; ++hour) {
                f.BadHour();
                QVERIFY2(f.Seen.isEmpty(), qPrintable(f.Seen));
                f.Stays = day % 2 == 0 && (f.Stays || f.Server.Files.contains("pw.jpg"));
            }
            f.CalmDown(QDate(2026, 3, 4).addDays(day));
            for (int minutes = 0; minutes < 200; ++minutes) {
                const int published = f.Published();
                f.Pass(minute + 1000);
                QVERIFY2(f.Published() > published, "no picture though all is well");
            }
            f.Look();
            QVERIFY2(f.Seen.isEmpty(), qPrintable(f.Seen));
            f.Forget();
            const PictureArchive& archive = f.Pictures.Archive();
            QTRY_VERIFY_WITH_TIMEOUT(!archive.Working(), 60'000);
            QVERIFY(archive.Now().Sum.Pictures > 200 || archive.Now().Is == ArchiveTrouble::Full);
            if (days > 0)
                std::fprintf(
                    stderr,
                    "Day %d of %d: %lld pictures seen, %lld of them offline, %d connections\n", day,
                    days, f.Looks, f.Offs, f.Server.Connections);
            Compare(before, Footprint::Now(f.Folder.path()), day);
            if (QTest::currentTestFailed()) return;
        }
        QVERIFY(f.Looks > 400);
    }

  private:
    // The first two days fill what is kept for the last hours, and the caches.
    static void Compare(Footprint& before, const Footprint& now, int day) {
        if (qEnvironmentVariableIsSet("STILLPOST_SOAK_DAYS"))
            std::fprintf(stderr,
                         "  heap %lld kB, resident %lld kB, descriptors %d, threads %d, files %d\n",
                         now.Heap / 1024, now.Resident / 1024, static_cast<int>(now.Descriptors),
                         static_cast<int>(now.Threads), static_cast<int>(now.Files.size()));
        if (day <= 2) before = now;
        QVERIFY(now.Heap <= before.Heap + 64 * 1024);
        QVERIFY(now.Resident <= before.Resident + 1024 * 1024);
        QCOMPARE(now.Descriptors, before.Descriptors);
        QCOMPARE(now.Threads, before.Threads);
        QCOMPARE(now.Files, before.Files);
    }
};

QTEST_GUILESS_MAIN(TestSoak)
#include "test_soak.moc"
