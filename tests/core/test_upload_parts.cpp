#include "core/console_display.h"
#include "core/history_plan.h"
#include "core/megabytes.h"
#include "core/reply_log.h"
#include "support/test_clock.h"

#include <QtTest>

class TestUploadParts : public QObject {
    Q_OBJECT

  private slots:
    void HistoryMovesFromTheOldestOn_data();
    void HistoryMovesFromTheOldestOn();
    void MegabytesAreTheSumOfRoundedPictures_data();
    void MegabytesAreTheSumOfRoundedPictures();
    void ReplyLogKeepsTheNewest();
    void ConsoleLinesCarryTheTime();
};

void TestUploadParts::HistoryMovesFromTheOldestOn_data() {
    QTest::addColumn<int>("pictures");
    QTest::addColumn<QString>("steps");
    QTest::addRow("one") << 1 << "-pw1.jpg pw.jpg>pw1.jpg";
    QTest::addRow("three") << 3 << "-pw3.jpg pw2.jpg>pw3.jpg pw1.jpg>pw2.jpg pw.jpg>pw1.jpg";
}

void TestUploadParts::HistoryMovesFromTheOldestOn() {
    QFETCH(int, pictures);
    QStringList steps;
    for (const HistoryStep& step : HistoryPlan(pictures))
        steps << (step.To.isEmpty() ? "-" + step.From : step.From + ">" + step.To);
    QTEST(steps.join(u' '), "steps");
}

void TestUploadParts::MegabytesAreTheSumOfRoundedPictures_data() {
    QTest::addColumn<QList<qint64>>("sizes");
    QTest::addColumn<QString>("text");
    QTest::addRow("none") << QList<qint64>{} << "0";
    QTest::addRow("too small to count") << QList<qint64>{5242, 5242, 5242} << "0";
    QTest::addRow("just counts") << QList<qint64>{5243} << "0.01";
    QTest::addRow("each rounded alone") << QList<qint64>{15'728, 15'728} << "0.02";
    QTest::addRow("no superfluous zeros") << QList<qint64>{1'572'864} << "1.5";
    QTest::addRow("thousands without separator") << QList<qint64>{1'294'139'392} << "1234.19";
}

void TestUploadParts::MegabytesAreTheSumOfRoundedPictures() {
    QFETCH(QList<qint64>, sizes);
    MegabyteCounter counter;
    for (const qint64 size : sizes) counter.Add(size);
    QTEST(counter.Text(), "text");
}

void TestUploadParts::ReplyLogKeepsTheNewest() {
    ReplyLog log;
    log.Add(QTime(9, 15, 7), QString(1200, u'a'));
    log.Add(QTime(9, 15, 8), "226 done\r\n");
    const QString newest = "09:15:08 : 226 done\r\n";
    QVERIFY(log.Text().startsWith(newest + "09:15:07 : aaa"));
    QCOMPARE(log.Text().size(), newest.size() + 1000);
}

void TestUploadParts::ConsoleLinesCarryTheTime() {
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

QTEST_GUILESS_MAIN(TestUploadParts)
#include "test_upload_parts.moc"
