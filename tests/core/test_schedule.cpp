#include "core/schedule/beat.h"
#include "core/schedule/schedule.h"
#include "support/data_rows.h"

#include <QTest>
#include <QTimeZone>

#include <random>

namespace {

using Kind = SunDay::Kind;

qint64 DayOf(const QDate& date) {
    return date.toJulianDay() - QDate(1970, 1, 1).toJulianDay();
}

QDateTime Utc(const QString& text) {
    return QDateTime(QDate::fromString(text.left(10), "yyyy-MM-dd"),
                     QTime::fromString(text.mid(11), "HH:mm"), Qt::UTC);
}

QString UtcText(const std::optional<QDateTime>& time) {
    return time ? time->toUTC().toString("yyyy-MM-dd HH:mm") : QString();
}

// How many minutes lie between a time of the sun and "08:15" of a clock so many minutes from UTC.
double Off(qint64 seconds, const QDate& date, const QString& written, int zone) {
    const QDateTime wanted(date, QTime::fromString(written, "HH:mm"), Qt::OffsetFromUTC, zone * 60);
    return std::abs(static_cast<double>(seconds - wanted.toSecsSinceEpoch())) / 60;
}

}  // namespace

class TestSchedule : public QObject {
    Q_OBJECT

  private slots:
    void HoursAreRead_data() {
        const Rows<QString, QString> row;
        row("usual", "mo-fr 06:00-22:00; sa,su 08:00-20:00", "");
        row("several a day", "mo-su 06:00-07:30,12:00-14:00", "");
        row("in other words", "Montag–vendredi 6-22 ; SA, dim 8:00 - 20:00;",
            "mo-fr 06:00-22:00; sa,su 08:00-20:00");
        row("Sunday in English", "sun 08:00-09:00", "su 08:00-09:00");
        row("no days", "22:30-24:00", "mo-su 22:30-24:00");
        row("no times", "sa su", "sa,su 00:00-24:00");
        row("days over the weekend", "sa-mo 08:00-09:00", "mo,sa,su 08:00-09:00");
        row("over midnight", "su 22:00-06:00", "mo 00:00-06:00; su 22:00-24:00");
        row("in each other", "mo 06:00-10:00; mo 08:00-12:00", "mo 06:00-12:00");
        row("no day", "mo-xy 06:00-22:00", "UnknownDay 3 xy");
        row("day of two languages", "sa,di 06:00-22:00", "TwoMeanings 3 di");
        row("no such minute", "mo 06:60-22:00", "WrongTime 3 06:60-22:00");
        row("a minute short", "mo 06:5-22:00", "WrongTime 3 06:5-22:00");
        row("after the end of the day", "mo 06:00-24:01", "WrongTime 9 24:01");
        row("hour without end", "mo 123456789012-13", "WrongTime 3 123456789012-13");
        row("no end", "mo 06:00", "NoRange 3 06:00");
        row("ends as it begins", "mo 06:00-06:00", "NoRange 3 06:00-06:00");
        row("digits of another script", "mo ٣-٤", "NoRange 3 ٣-٤");
        row("end is missing", "mo 06:00-, tu", "NoTime 9 ");
        row("nothing between", "mo; ; tu", "NoTime 4 ");
        row("no semicolon", "mo 06:00-22:00 tu", "NoSemicolon 15 tu");
        row("rubbish", "?", "NoTime 0 ?");
    }
    void HoursAreRead() {
        const auto [text, read] = Row<QString, QString>();
        std::optional<HoursFault> fault;
        const Hours hours = Hours::Parse(text, fault);
        const QStringList kinds{"UnknownDay", "TwoMeanings", "NoTime",
                                "WrongTime",  "NoRange",     "NoSemicolon"};
        const QString told = fault ? QString("%1 %2 %3")
                                         .arg(kinds.at(static_cast<int>(fault->Is)),
                                              QString::number(fault->At), fault->What)
                                   : hours.Week.ToText();
        QCOMPARE(told, read.isEmpty() ? text : read);
        QCOMPARE(hours.Is == Hours::Kind::Always, fault.has_value());
    }

    void WhatIsWrittenIsReadAgain() {
        std::mt19937 random(1);
        const auto upTo = [&random](int most) {
            return std::uniform_int_distribution(0, most)(random);
        };
        for (int round = 0; round < 200; ++round) {
            WeekHours week;
            for (int i = upTo(9); i >= 0; --i)
                week.Set(1 + upTo(6), upTo(1439), 1 + upTo(1439), upTo(2) > 0);
            std::optional<HoursFault> fault;
            QVERIFY(Hours::Parse(week.ToText(), fault).Week == week || !week.Any());
        }
    }

    // The two nights in which the clock is put on or back, minute by minute. Changes: UTC.
    void ClockJumps_data() {
        const Rows<QString, QString, QString, QStringList> row;
        const QString berlin = "Europe/Berlin";
        const QString york = "America/New_York";
        row("begins in the hour that is left out", berlin, "su 02:30-05:00", "2026-03-28 12:00",
            {"2026-03-29 01:00", "2026-03-29 03:00"});
        row("ends in it", berlin, "su 00:00-02:30", "2026-03-28 12:00",
            {"2026-03-28 23:00", "2026-03-29 01:00"});
        row("lies in it", berlin, "su 02:10-02:50", "2026-03-28 12:00", {"2026-04-05 00:10"});
        row("lies in the hour that comes twice", berlin, "su 02:15-02:45", "2026-10-24 12:00",
            {"2026-10-25 00:15", "2026-10-25 00:45", "2026-10-25 01:15", "2026-10-25 01:45"});
        row("ends in it twice", berlin, "su 01:00-02:30", "2026-10-24 12:00",
            {"2026-10-24 23:00", "2026-10-25 00:30", "2026-10-25 01:00", "2026-10-25 01:30"});
        row("over the night", berlin, "sa 22:00-06:00", "2026-10-24 12:00",
            {"2026-10-24 20:00", "2026-10-25 05:00"});
        row("America in spring", york, "su 02:30-05:00", "2026-03-07 12:00",
            {"2026-03-08 07:00", "2026-03-08 09:00"});
        row("America in autumn", york, "su 01:30-01:45", "2026-10-31 12:00",
            {"2026-11-01 05:30", "2026-11-01 05:45", "2026-11-01 06:30", "2026-11-01 06:45"});
        row("at midnight", "America/Havana", "su 00:30-02:00", "2026-03-07 12:00",
            {"2026-03-08 05:00", "2026-03-08 06:00"});
    }
    void ClockJumps() {
        const auto [zone, hours, begin, changes] = Row<QString, QString, QString, QStringList>();
        const Schedule schedule(hours, {});
        const QTimeZone there(zone.toLatin1());
        QVERIFY(there.isValid() && !schedule.Fault());
        QStringList left = changes;
        bool open = false;
        constexpr int minutes = 36 * 60;
        for (int i = 0; i < minutes && !left.isEmpty(); ++i) {
            const QDateTime now = Utc(begin).addSecs(i * 60).toTimeZone(there);
            if (UtcText(now) == left.first()) {
                open = !open;
                left.removeFirst();
            }
            QVERIFY2(schedule.Open(now) == open, qPrintable(now.toString(Qt::ISODate)));
            if (!left.isEmpty() && i % 5 == 0)
                QCOMPARE(UtcText(schedule.NextChange(now)), left.first());
        }
        QVERIFY(left.size() < 2);
    }

    void TwoYearsOfDays_data() {
        Rows<QString>({{"Europe/Berlin"}, {"America/New_York"}, {"Australia/Lord_Howe"}});
    }
    void TwoYearsOfDays() {
        const auto [zone] = Row<QString>();
        const QTimeZone there(zone.toLatin1());
        const Schedule schedule("mo-fr 06:00-22:00; sa,su 08:00-20:00", {});
        for (QDate date(2026, 1, 1); date.year() < 2028; date = date.addDays(1)) {
            const bool weekend = date.dayOfWeek() > 5;
            const QDateTime begin(date, QTime(weekend ? 8 : 6, 0), there);
            const QDateTime end(date, QTime(weekend ? 20 : 22, 0), there);
            for (const auto& [now, open] : {std::pair(begin.addSecs(-1), false),
                                            {begin, true},
                                            {end.addSecs(-1), true},
                                            {end, false}})
                QVERIFY2(schedule.Open(now) == open, qPrintable(now.toString(Qt::ISODate)));
            QCOMPARE(schedule.NextChange(QDateTime(date, QTime(4, 30), there)), begin);
            QCOMPARE(schedule.NextChange(begin), end);
        }
    }

    // Published times: of the planetarium in Berlin, timeanddate.com (Quito, Sydney, Ushuaia), the
    // United States Naval Observatory (Tromsø).
    void SunRisesAndSets_data() {
        const Rows<QString, QDate, int, QString, QString> row;  // minutes from UTC
        const QString berlin = "52.52, 13.405";
        const QString quito = "-0.22, -78.51";
        const QString sydney = "33.856° S, 151.207° E";
        const QString tromso = "69.5 19.0";
        const QString ushuaia = "-54.8;-68.3";
        row("Berlin", berlin, {2019, 12, 21}, 60, "08:15", "15:55");
        row("Quito in December", quito, {2017, 12, 21}, -300, "06:08", "18:16");
        row("Quito in March", quito, {2018, 3, 21}, -300, "06:18", "18:24");
        row("Quito in June", quito, {2018, 6, 21}, -300, "06:13", "18:19");
        row("Quito in September", quito, {2018, 9, 21}, -300, "06:04", "18:10");
        row("Sydney", sydney, {2019, 12, 1}, 660, "05:37", "19:50");
        row("Sydney later", sydney, {2019, 12, 31}, 660, "05:46", "20:09");
        row("Tromsø", tromso, {2014, 4, 1}, 60, "04:50", "18:49");
        row("Tromsø later", tromso, {2014, 4, 30}, 60, "02:29", "20:58");
        row("Ushuaia", ushuaia, {2023, 6, 21}, -180, "09:58", "17:11");
    }
    void SunRisesAndSets() {
        const auto [where, date, zone, rise, set] = Row<QString, QDate, int, QString, QString>();
        const auto place = GeoPlace::Parse(where);
        QVERIFY(place.has_value());
        const SunDay sun = SunOf(*place, DayOf(date));
        QCOMPARE(sun.Is, Kind::RisesAndSets);
        const double offRise = Off(sun.Rise, date, rise, zone);
        const double offSet = Off(sun.Set, date, set, zone);
        QVERIFY2(offRise < 2 && offSet < 2,
                 qPrintable(QString("%1 and %2 minutes").arg(offRise).arg(offSet)));
    }

    // The first and last days as they are published, a day more or less where the sun grazes.
    void PolarDaysAndNights_data() {
        const Rows<QString, QDate, Kind> row;
        const QString tromso = "69.65, 18.96";
        const QString longyearbyen = "78.22, 15.65";
        row("Tromsø, before midnight sun", tromso, {2026, 5, 16}, Kind::RisesAndSets);
        row("Tromsø, midnight sun", tromso, {2026, 5, 20}, Kind::Up);
        row("Tromsø, last of it", tromso, {2026, 7, 24}, Kind::Up);
        row("Tromsø, after it", tromso, {2026, 7, 28}, Kind::RisesAndSets);
        row("Tromsø, before the night", tromso, {2026, 11, 25}, Kind::RisesAndSets);
        row("Tromsø, night", tromso, {2026, 11, 29}, Kind::Down);
        row("Tromsø, last of it", tromso, {2026, 1, 13}, Kind::Down);
        row("Tromsø, sun is back", tromso, {2026, 1, 17}, Kind::RisesAndSets);
        row("Longyearbyen, last of the night", longyearbyen, {2026, 2, 14}, Kind::Down);
        row("Longyearbyen, sun is back", longyearbyen, {2026, 2, 17}, Kind::RisesAndSets);
        row("Longyearbyen, before midnight sun", longyearbyen, {2026, 4, 17}, Kind::RisesAndSets);
        row("Longyearbyen, midnight sun", longyearbyen, {2026, 4, 20}, Kind::Up);
        row("Longyearbyen, last of it", longyearbyen, {2026, 8, 22}, Kind::Up);
        row("Longyearbyen, after it", longyearbyen, {2026, 8, 26}, Kind::RisesAndSets);
        row("Longyearbyen, before the night", longyearbyen, {2026, 10, 24}, Kind::RisesAndSets);
        row("Longyearbyen, night", longyearbyen, {2026, 10, 28}, Kind::Down);
        row("the pole", "-90, 0", {2026, 6, 21}, Kind::Down);
    }
    void PolarDaysAndNights() {
        const auto [where, date, kind] = Row<QString, QDate, Kind>();
        QCOMPARE(SunOf(*GeoPlace::Parse(where), DayOf(date)).Is, kind);
    }

    void NoPlace_data() {
        Rows<QString>({{""}, {"Berlin"}, {"91, 0"}, {"0, 181"}, {"52.52"}, {"1, 2, 3"}});
    }
    void NoPlace() {
        const auto [where] = Row<QString>();
        const Schedule schedule("Sun", where);
        QVERIFY(schedule.Fault() && schedule.Fault()->Is == HoursFault::Kind::NoPlace);
        QVERIFY(schedule.Open(Utc("2026-01-01 00:00")));
    }

    // From change to change: at each the hours begin or end, and at no hour between.
    void TwoYearsOfLight_data() {
        const Rows<QString, int, int> row;  // changes at least and at most
        row("Berlin", "52.52, 13.405", 4 * 365, 4 * 365);
        row("Sydney on a clock of Berlin", "-33.87, 151.21", 4 * 365, 4 * 365);
        row("Fiji", "-17.7, 178", 4 * 365, 4 * 365);
        row("Longyearbyen", "78.22, 15.65", 4 * 100, 4 * 130);
    }
    void TwoYearsOfLight() {
        const auto [where, least, most] = Row<QString, int, int>();
        const Schedule schedule("sun", where);
        const QDateTime end(QDate(2028, 1, 1), QTime(0, 0), QTimeZone("Europe/Berlin"));
        QDateTime now = end.addYears(-2);
        int changes = 0;
        for (; now < end; ++changes) {
            const bool open = schedule.Open(now);
            const auto next = schedule.NextChange(now);
            QVERIFY(next && *next > now);
            for (QDateTime step = now; step < *next; step = step.addSecs(3600))
                QVERIFY2(schedule.Open(step) == open, qPrintable(step.toString(Qt::ISODate)));
            QVERIFY(schedule.Open(*next) != open && schedule.Open(next->addSecs(-1)) == open);
            now = *next;
        }
        QVERIFY2(changes >= least - 4 && changes <= most + 4, qPrintable(QString::number(changes)));
    }

    // Where the nights are short, it reaches over midnight.
    void LightLastsToItsEnd() {
        for (int latitude = 64; latitude < 90; ++latitude) {
            const Schedule schedule("sun", QString("%1, 0").arg(latitude));
            for (qint64 day = DayOf({2026, 1, 1}); day < DayOf({2027, 1, 1}); ++day)
                if (const auto light = schedule.LightOf(day))
                    for (const qint64 each : {light->first, light->second - 1})
                        QVERIFY(schedule.Open(QDateTime::fromSecsSinceEpoch(each, Qt::UTC)));
        }
    }

    void LongNight() {
        const Schedule schedule("sun", "78.22, 15.65");
        const auto next = schedule.NextChange(Utc("2026-11-15 12:00"));
        QVERIFY(next && std::abs(next->date().daysTo(QDate(2027, 2, 16))) <= 1);
        QVERIFY(!Schedule("", "").NextChange(*next));
        QVERIFY(!Schedule("mo-su", "").NextChange(*next));
    }

    void CountsFromMidnight_data() {
        const Rows<QTime, qint64, qint64, qint64> row;  // interval, since, until; milliseconds
        row("ten minutes", {10, 5, 0}, 600'000, 300'000, 300'000);
        row("on the minute", {10, 10, 0}, 600'000, 0, 600'000);
        row("does not divide the day", {23, 59, 0}, 420'000, 4 * 60'000, 60'000);
        row("half a second", {0, 0, 1, 700}, 500, 200, 300);
        row("a day", {6, 0, 0}, 86'400'000, 6 * 3'600'000, 18 * 3'600'000);
    }
    void CountsFromMidnight() {
        const auto [time, interval, since, until] = Row<QTime, qint64, qint64, qint64>();
        const Beat beat = Beat::At(QDateTime(QDate(2026, 3, 29), time, Qt::UTC), interval);
        QCOMPARE(beat.Since, since);
        QCOMPARE(beat.Until, until);
    }
};

QTEST_GUILESS_MAIN(TestSchedule)
#include "test_schedule.moc"
