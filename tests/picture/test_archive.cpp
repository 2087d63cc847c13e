#include "picture/archive/archive_day.h"
#include "picture/archive/archive_index.h"
#include "picture/archive/archive_names.h"
#include "support/data_rows.h"

namespace {

constexpr qint64 hour = 3'600'000;

}  // namespace

class TestArchive : public QObject {
    Q_OBJECT

  private slots:
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
};

QTEST_GUILESS_MAIN(TestArchive)
#include "test_archive.moc"
