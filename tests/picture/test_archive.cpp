#include "picture/archive/archive_folder.h"
#include "picture/archive/archive_names.h"
#include "picture/archive/picture_archive.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/recording_display.h"
#include "support/test_clock.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

constexpr qint64 hour = 3'600'000;

QDateTime At(const QDate& day, int hours = 12, int seconds = 0) {
    return {day, QTime(hours, 0, seconds)};
}

}  // namespace

class TestArchive : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        own = std::make_unique<QTemporaryDir>();
        path = own->path() + u'/';
        room = 1'000'000'000;
        archive.reset();
        settings = {.Archive = true, .ArchivePath = path, .ArchiveIso = true};
    }

    void KnowsItsNames_data() {
        Rows<QString, bool>({{"2026-11-22-063015.jpg", true},
                             {"2026-11-22-063015_02.jpg", true},
                             {"2026-11-22/22. 11. 2026-063015.jpg", true},
                             {"2026-13-22/2026-11-22-063015.jpg", false},
                             {"../2026-11-22-063015.jpg", false},
                             {"2026-11-22-06301x.jpg", false},
                             {"-063015.jpg", false},
                             {"holiday.jpg", false},
                             {"2026-11-22-063015.jpg.part", false}});
    }
    void KnowsItsNames() {
        const auto [name, known] = Row<QString, bool>();
        QCOMPARE(IsArchiveName(name), known);
        QCOMPARE(IndexEntries("7 " + name.toUtf8() + "\n").size(), known ? 1 : 0);
    }

    void ReadsWhatAPowerCutHasLeft() {
        const QByteArray text(
            "7 2026-11-22-063015.jpg\n8 2026-11-22-063015.jpg\n\n-1 a-063015.jpg\n"
            "99999999999999999999 b-063015.jpg\n\0\0 x\n4 b-0630\n5 c-063016.jpg",
            127);
        const ArchiveEntry only{8, "2026-11-22-063015.jpg"};
        QCOMPARE(IndexEntries(text), QList<ArchiveEntry>{only});
        QCOMPARE(IndexEntries(text + '\n').value(1).Path, "c-063016.jpg");
    }

    void NamesSortAndAreNeverTakenTwice() {
        for (const char* each : {"a", "b", "c"}) Keep(At(QDate(2026, 11, 22)), each);
        Keep(At(QDate(2026, 11, 22), 12, 1));
        const QStringList names{"2026-11-22-120000.jpg", "2026-11-22-120000_02.jpg",
                                "2026-11-22-120000_03.jpg", "2026-11-22-120001.jpg"};
        QCOMPARE(Files(), names);
        QCOMPARE(ReadBytes(path + names[0]), "a");
        QCOMPARE(SystemNamesExist(QLocale("en_US")), false);
        QCOMPARE(SystemNamesExist(QLocale("de_DE")), true);
    }

    // The day after a year's jump of the clock, and what the clock says then.
    void AClockThatJumpsTakesADayAnHour() {
        const QDate today(2026, 11, 22);
        ArchiveDay day(today);
        for (int hours = 0; hours < 5; ++hours) day.Follow(today.addYears(1), hours * hour);
        QCOMPARE(day.Judges(today.addYears(1)), today.addDays(5));
        day.Follow(today, 5 * hour);
        QCOMPARE(day.Known(), today);
        day.Follow(QDate(1970, 1, 1), 6 * hour);
        QCOMPARE(day.Known(), today);
        QCOMPARE(day.Judges(QDate(1970, 1, 1)), QDate(1970, 1, 1));
        day = ArchiveDay(QDate(1970, 1, 1));
        day.Follow(today, 0);
        QCOMPARE(day.Known(), today);
    }

    void RemovesItsOwnAlone_data() {
        // The settings, and of the days from the 1st to the 10th, two pictures of 1 MB each, the
        // first that is left.
        const Rows<int, int, bool, int> row;
        row("for good", 0, 0, false, 1);
        row("by age", 3, 0, false, 7);
        row("by age, in folders", 3, 0, true, 7);
        row("by size", 0, 8, true, 7);
        row("both", 5, 6, false, 8);
    }
    void RemovesItsOwnAlone() {
        const auto [keptDays, megabytes, folders, first] = Row<int, int, bool, int>();
        settings.ArchiveFolders = folders;
        const QByteArray picture(1024 * 1024, 'x');
        for (int day = 1; day <= 10; ++day)
            for (int second = 0; second < 2; ++second)
                Keep(At(QDate(2026, 11, day), 12, second), picture);
        // Somebody else's, one written over, one that somebody has put into a day's folder.
        QVERIFY(WriteBytes(path + "2026-11-01-120005.jpg", "x"));
        const QString over = (folders ? QString("2026-11-02/") : "") + "2026-11-02-120000.jpg";
        QVERIFY(WriteBytes(path + over, "edited"));
        if (folders) QVERIFY(WriteBytes(path + "2026-11-03/notes.txt", "x"));
        QVERIFY(WriteBytes(path + ".stillpost/day", "2026-11-10"));
        settings.ArchiveDays = keptDays;
        settings.ArchiveMegabytes = megabytes;
        archive.emplace(path, [this](const QString&) { return room; });
        Tidy(QDate(2026, 11, 10));
        QStringList left{"2026-11-01-120005.jpg", over};
        if (folders) left << "2026-11-03/notes.txt";
        for (int day = first; day <= 10; ++day) {
            const QString name = DayFolder(QDate(2026, 11, day));
            for (const QString& second : {QString("-120000.jpg"), QString("-120001.jpg")})
                left << (folders ? name + u'/' : QString()) + name + second;
        }
        left.removeDuplicates();
        left.sort();
        QCOMPARE(Files(), left);
        const qint64 pictures = 2 * (11 - first);
        QCOMPARE(archive->Sum().Pictures, pictures);
        QCOMPARE(ArchiveFolder(path).Sum().Pictures, pictures);
        QCOMPARE(QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(),
                 folders ? 10 - first + 1 + (first > 3 ? 2 : 0) : 0);
    }

    void AWrongClockLeavesTheArchive() {
        settings.ArchiveDays = 30;
        const QDate today(2026, 11, 22);
        for (int day = 60; day >= 0; --day) {
            Keep(At(today.addDays(-day)));
            Tidy(today.addDays(-day), -day * hour);
        }
        QCOMPARE(archive->Sum().Pictures, 31);
        Keep(At(today.addYears(1)));
        for (int hours = 1; hours < 4; ++hours) Tidy(today.addYears(1), hours * hour);
        QCOMPARE(archive->Sum().Pictures, 29);
        // Neither a start with the wrong clock nor one without a day known makes it faster.
        archive.reset();
        QVERIFY(QFile::remove(path + ".stillpost/day"));
        Tidy(today.addYears(1));
        QCOMPARE(archive->Sum().Pictures, 29);
    }

    void WithoutItsIndexEverythingStays() {
        settings.ArchiveMegabytes = 1;
        for (int i = 0; i < 5; ++i) Keep(At(QDate(2026, 11, 1), i), QByteArray(400'000, 'x'));
        QVERIFY(QDir(path + ".stillpost").removeRecursively());
        // Noticed while it runs as well.
        Keep(At(QDate(2026, 11, 1), 6), QByteArray(400'000, 'x'));
        QCOMPARE(archive->Sum().Pictures, 1);
        Tidy(QDate(2026, 11, 1));
        QCOMPARE(Files().size(), 6);
    }

    // What the disk does, and what the status says of it.
    void SaysOnceWhatIsWrong() {
        TestClock clock;
        RecordingDisplay display;
        const QString picture = path + "1pw.jpg";
        QVERIFY(WriteBytes(picture, "x"));
        settings.ArchivePath = path + "disk/";
        settings.ArchiveEvery = 2;
        {
            PictureArchive disk(display, clock);
            const auto keep = [&](int times) {
                for (int i = 0; i < times; ++i)
                    disk.Keep(picture, settings, clock.Now(), QLocale::c());
            };
            keep(3);
            QTRY_COMPARE(disk.Now().Is, ArchiveTrouble::Folder);
            QVERIFY(QDir().mkpath(settings.ArchivePath));
            keep(4);
            QTRY_COMPARE(disk.Now().Is, ArchiveTrouble::None);
        }
        QVERIFY(QDir(settings.ArchivePath).entryList(QDir::Files).size() < 4);
        QCOMPARE(display.Statuses, (QStringList{"Archive pauses: cannot write " + path + "disk/",
                                                "Archive goes on"}));
    }

    void PausesBeforeTheDiskIsFull() {
        const auto keep = [this](qint64 megabytes) {
            room = megabytes * 1024 * 1024;
            return archive->Keep("x", settings, At(QDate(2026, 11, 22)), QLocale::c());
        };
        Keep(At(QDate(2026, 11, 22)));
        QCOMPARE(keep(199), ArchiveTrouble::Full);
        QCOMPARE(keep(210), ArchiveTrouble::Full);
        QCOMPARE(keep(230), ArchiveTrouble::None);
        QCOMPARE(keep(210), ArchiveTrouble::None);
    }

  private:
    void Keep(const QDateTime& time, const QByteArray& picture = "x") {
        if (!archive) archive.emplace(path, [this](const QString&) { return room; });
        QCOMPARE(archive->Keep(picture, settings, time, QLocale::c()), ArchiveTrouble::None);
    }
    void Tidy(const QDate& today, qint64 now = 0) {
        if (!archive) archive.emplace(path);
        int rounds = 0;
        while (archive->Tidy(settings, today, now)) QVERIFY(++rounds < 1000);
    }
    [[nodiscard]] QStringList Files() const {
        QStringList files = QDir(path).entryList(QDir::Files, QDir::Name);
        for (const QString& day : QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            for (const QString& file : QDir(path + day).entryList(QDir::Files, QDir::Name))
                files << day + u'/' + file;
        files.sort();
        return files;
    }

    std::unique_ptr<QTemporaryDir> own;
    QString path;
    qint64 room = 0;
    ArchiveSettings settings;
    std::optional<ArchiveFolder> archive;
};

QTEST_GUILESS_MAIN(TestArchive)
#include "test_archive.moc"
