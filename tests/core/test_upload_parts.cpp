#include "core/console_display.h"
#include "core/megabytes.h"
#include "core/reply_log.h"
#include "support/data_rows.h"
#include "support/test_clock.h"

#include <QTime>

class TestUploadParts : public QObject {
    Q_OBJECT

  private slots:
    void MegabytesAreTheSumOfRoundedPictures_data() {
        const Rows<QList<qint64>, QString> row;
        row("too small to count", {5242, 5242, 5242}, "0");
        row("just counts", {5243}, "0.01");
        row("each rounded alone", {15'728, 15'728}, "0.02");
        row("thousands without separator", {1'294'139'392}, "1234.19");
    }
    void MegabytesAreTheSumOfRoundedPictures() {
        const auto [sizes, text] = Row<QList<qint64>, QString>();
        MegabyteCounter counter;
        for (const qint64 size : sizes) counter.Add(size);
        QCOMPARE(counter.Text(), text);
    }

    void ReplyLogKeepsTheNewest() {
        ReplyLog log;
        log.Add(QTime(9, 15, 7), QString(1200, u'a'));
        log.Add(QTime(9, 15, 8), "226 done\r\n");
        const QString newest = "09:15:08 : 226 done\r\n";
        QVERIFY(log.Text().startsWith(newest + "09:15:07 : aaa"));
        QCOMPARE(log.Text().size(), newest.size() + 1000);
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
        const QStringList expected{"09:05:01.020 -- Send File", "09:05:01.020 -- online",
                                   "09:05:01.020 <- 220-Hello", "09:05:01.020 <- 220 you"};
        QCOMPARE(printed, expected);
    }
};

QTEST_GUILESS_MAIN(TestUploadParts)
#include "test_upload_parts.moc"
