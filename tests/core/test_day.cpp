#include "core/day_film.h"
#include "core/run_record.h"
#include "support/cycle_fixture.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QImage>

namespace {

// The last minutes, a letter for each.
QString LastMinutes(const DayRecord& day, int count) {
    const QString letters = ".owFCP";
    QString text;
    for (qint64 minute = day.Last() - count + 1; minute <= day.Last(); ++minute)
        text += letters[static_cast<int>(day.At(minute).State)];
    return text;
}

}  // namespace

// What a run leaves behind of a day: its record, minute by minute, and its film.
class TestDay : public QObject {
    Q_OBJECT

  private slots:
    // Made once midnight is over, sent between two pictures, tried again, given up after a day.
    void FilmOfTheDay_data() {
        const Rows<bool, int> row;
        row("server", false, 0);
        row("server that refuses it for two hours", false, 2);
        row("server that refuses it for a day", false, 25);
        row("folder", true, 0);
    }

    void FilmOfTheDay() {
        const auto [local, hoursRefused] = Row<bool, int>();
        CycleFixture f(60'000);
        f.Time.SetNow(QDateTime(QDate(2026, 3, 4), QTime(23, 58)));
        f.State.Values.Uptime = 9;  // minutes more
        f.State.Values.DayFilm = true;
        f.State.Values.ArchivePath = f.Folder.filePath("archive/");
        QVERIFY(QDir(f.Folder.path()).mkdir("archive") && QDir(f.Folder.path()).mkdir("site"));
        QImage picture(32, 24, QImage::Format_RGB32);
        picture.fill(Qt::red);
        for (const char* time : {"120000", "120001"})
            QVERIFY(picture.save(
                f.Folder.filePath("archive/2026-03-04-" + QString::fromLatin1(time) + ".jpg")));
        if (local) f.GoLocal("site/");
        DayFilm film(
            {f.Wait, f.Net, f.Transaction, f.Display, f.State, f.Words, f.Run, f.Picture.Locale},
            f.Folder.filePath("dayfilm"));
        f.Cycle.SetBetween([&film] { film.SendWhenDue(); });
        const auto sent = [&f, local = local] {
            return local ? ReadBytes(f.Folder.filePath("site/film.mp4"))
                         : f.Server.Files.value("film.mp4");
        };
        const auto kept = [&f](const QString& name) {
            return QFile::exists(f.Folder.filePath("dayfilm/" + name + "2026-03-04.mp4"));
        };
        bool refuses = hoursRefused > 0;
        f.Server.Whim = [&](const QString& verb) {
            const bool theFilm =
                f.Server.Commands.value(f.Server.Commands.size() - 1).contains("1film.mp4");
            return refuses && theFilm ? Says(verb, {"550 no\r\n"}) : FtpFault();
        };
        QVERIFY(f.Begin());
        QVERIFY(!kept("unsent.") && !kept(""));
        f.Time.Advance(180'000);
        const auto made = [&] { return kept("unsent.") || kept(""); };
        // Threads have their own time, and each film needs one of them.
        QTRY_VERIFY_WITH_TIMEOUT((f.Time.Advance(made() ? 0 : 60'000), made()), 30'000);
        // Asleep between the pictures: each second of a day would take long where events are slow.
        for (int i = 0; i < 6 * hoursRefused; ++i) {
            f.Time.Suspend(540'000);
            f.Time.Advance(60'000);
        }
        QVERIFY2(f.Published() >= 6 * hoursRefused, "pictures do not wait for it");
        refuses = false;
        if (local) QTRY_VERIFY((f.Time.Advance(60'000), kept("")));
        f.Time.Advance(3'600'000);
        QCOMPARE(kept(""), hoursRefused < 24);
        QVERIFY(!kept("unsent."));
        QCOMPARE(sent().mid(4, 4), hoursRefused < 24 ? QByteArray("ftyp") : QByteArray());
        const auto times = f.Server.Commands.count("RNTO film.mp4");
        QCOMPARE(times, local || hoursRefused > 24 ? 0 : 1);
    }

    void RecordsTheDay() {
        CycleFixture f(60'000);
        f.State.Values.Uptime = 1;
        const QString file = f.Folder.filePath("day.bin");
        RunRecord record(f.Time, f.Run, f.Cycle, file);
        constexpr int minute = 60'000;
        const auto pass = [&](int minutes) { f.Time.Advance(minutes * minute); };
        pass(1);
        f.Server.Script = {{.Verb = "RNFR", .DelayMilliseconds = 3'000}};
        f.Cycle.Start();
        pass(5);
        QVERIFY2(QFile::exists(file), "kept every five minutes");
        QVERIFY(QFile::remove(file));
        f.Camera.Plugged = false;
        pass(3);
        QVERIFY2(!QFile::exists(file), "and not more often");
        f.Camera.Plugged = true;
        f.System.Online.Set(false, OnlineState::Lan);
        pass(2);
        f.Cycle.Pause();
        pass(1);
        QCOMPARE(LastMinutes(record.Day(), 13), ".wPwPwPwCCFF.");
        const MinuteRecord first = record.Day().At(record.Day().Last() - 10);
        QCOMPARE(first.Pictures, 1);
        QVERIFY(first.Bytes > 100 && first.Milliseconds >= 3'000 && first.Milliseconds < 4'000);
    }

    void RecordOutlivesTheProgram_data() {
        const Rows<qint64, int, int, QString> row;  // seconds passed, hours from UTC, damaged byte
        row("at once", 0, 0, -1, "PFCwP");
        row("two minutes later", 120, 0, -1, "CwP..");
        row("the clock was fast", -120, 0, -1, "..PFC");
        row("another time zone, or summer time", 0, 2, -1, "PFCwP");
        row("a year later", 365 * 86'400, 0, -1, ".....");
        row("the clock stands a year back", -365 * 86'400, 0, -1, ".....");
        row("before there were clocks", -100LL * 365 * 86'400, 0, -1, ".....");
        row("damaged", 0, 0, 5000, ".....");
        row("cut off", 0, 0, 15'000, ".....");
    }

    void RecordOutlivesTheProgram() {
        const auto [passed, zone, damage, states] = Row<qint64, int, int, QString>();
        CycleFixture f;
        const QDateTime now(QDate(2026, 3, 29), QTime(1, 0), Qt::UTC);
        DayRecord day;
        day.MoveTo(now.toSecsSinceEpoch() / 60 - 4);
        for (const auto state :
             {MinuteState::Published, MinuteState::Failed, MinuteState::CameraGone,
              MinuteState::Waiting, MinuteState::Published}) {
            day.Note(state);
            if (day.Last() * 60 < now.toSecsSinceEpoch()) day.MoveTo(day.Last() + 1);
        }
        QByteArray bytes = day.ToBytes();
        if (damage > 10'000) bytes.truncate(damage);
        if (damage == 5000) bytes[damage] = static_cast<char>(bytes[damage] + 1);
        QVERIFY(WriteBytes(f.Folder.filePath("day.bin"), bytes));
        f.Time.SetNow(now.addSecs(passed).toOffsetFromUtc(zone * 3600));
        RunRecord record(f.Time, f.Run, f.Cycle, f.Folder.filePath("day.bin"));
        QCOMPARE(LastMinutes(record.Day(), 5), states);
    }
};

QTEST_GUILESS_MAIN(TestDay)
#include "test_day.moc"
