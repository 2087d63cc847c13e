#include "net/block_plan.h"
#include "net/ftp_reply.h"
#include "net/ftp_text.h"
#include "net/last_error_store.h"
#include "net/listing.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class TestFtpValues : public QObject {
    Q_OBJECT

  private slots:
    void PlansBlocks_data() {
        QTest::addColumn<qint32>("total");
        QTest::addColumn<QList<qint32>>("plan");  // block size, full blocks, remainder
        const auto row = [](qint32 total, const QList<qint32>& plan) {
            QTest::addRow("%d bytes", total) << total << plan;
        };
        row(0, {0, 0, 0});
        row(1, {1, 1, 0});
        row(500, {500, 1, 0});
        row(999, {999, 1, 0});
        row(1195, {1195, 1, 0});
        row(1196, {1196, 1, 0});
        row(5000, {4196, 1, 804});
        row(8195, {7196, 1, 999});
        row(8196, {8196, 1, 0});
        row(10000, {8196, 1, 1804});
        row(16392, {8196, 2, 0});
        row(2147483647, {8196, 262016, 511});
    }
    void PlansBlocks() {
        QFETCH(qint32, total);
        const BlockPlan plan = BlockPlan::For(total);
        QTEST((QList<qint32>{plan.BlockSize, plan.FullBlocks, plan.Remainder}), "plan");
    }

    void AnnouncesPorts() {
        const QHostAddress address(QStringLiteral("192.168.0.5"));
        QCOMPARE(PortArgument(address, 1035), QStringLiteral("192,168,0,5,4,11"));
        QCOMPARE(PortArgument(address, 65280), QStringLiteral("192,168,0,5,255,0"));
    }

    void ReadsReplyCodes_data() {
        QTest::addColumn<QString>("chunk");
        QTest::addColumn<int>("code");
        QTest::addRow("plain") << "226 done\r\n" << 226;
        QTest::addRow("first of several lines") << "150 a\r\n226 b\r\n" << 150;
        QTest::addRow("no text") << "220" << 220;
        QTest::addRow("cut in the code") << "22" << 22;
        QTest::addRow("longer number") << "2261" << 226;
        QTest::addRow("text") << "welcome 230" << 0;
        QTest::addRow("indented text") << "  x" << 0;
        QTest::addRow("other digits") << QStringLiteral("٢٢٠ x") << 0;
        QTest::addRow("empty") << "" << 0;
    }
    void ReadsReplyCodes() {
        QFETCH(QString, chunk);
        QTEST(ReplyCodeOf(chunk), "code");
    }

    void JoinsReplyLines_data() {
        QTest::addColumn<QStringList>("chunks");
        QTest::addColumn<QList<int>>("codes");
        QTest::addColumn<bool>("unfinished");
        const QList<int> both{220, 230};
        QTest::addRow("one") << QStringList{"220 a\r\n"} << QList<int>{220} << false;
        QTest::addRow("two in one chunk") << QStringList{"220 a\r\n230 b\r\n"} << both << false;
        QTest::addRow("cut in the code")
            << QStringList{"2", "20 a\r\n23", "0 b\n"} << both << false;
        QTest::addRow("several lines")
            << QStringList{"220-a\r\n", "230 users\r\n 530 no\r\n220-b\r\n220 c\r\n"}
            << QList<int>{220} << false;
        QTest::addRow("last line to come")
            << QStringList{"220-a\r\n220"} << QList<int>{220} << true;
        QTest::addRow("code alone") << QStringList{"230\n"} << QList<int>{230} << false;
        QTest::addRow("no code") << QStringList{"\r\nhello\r\n99\r\n099 x\r\n-12 x\r\n"}
                                 << QList<int>{} << false;
    }
    void JoinsReplyLines() {
        QFETCH(QStringList, chunks);
        ReplyLines lines;
        for (const QString& chunk : chunks) lines.Feed(chunk);
        QTEST(lines.Codes, "codes");
        QTEST(lines.Unfinished(), "unfinished");
    }

    void FindsSizesInListings_data() {
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<qint32>("size");
        QTest::addRow("unix") << QByteArray(
                                     "total 8\r\n"
                                     "-rw-r--r--   1 cam  users    12345 Jan  1 10:00 pw.jpg\r\n"
                                     "-rw-r--r--   1 cam  users        7 Jan  1 10:00 1pw.jpg\r\n")
                              << 12345;
        QTest::addRow("bare line ends")
            << QByteArray("-r 1 a b 5 Jan 1 1 pw.jpg\n-r 1 a b 6 J 1 1 x\n") << 5;
        QTest::addRow("last of a name counts")
            << QByteArray("-r 1 a b 5 x pw.jpg\n-r 1 a b 6 x pw.jpg") << 6;
        QTest::addRow("other case") << QByteArray("-r 1 a b 5 x PW.JPG\n") << 0;
        QTest::addRow("columns missing") << QByteArray("pw.jpg\n5 pw.jpg\n") << 0;
        QTest::addRow("no number") << QByteArray("-r 1 a b c pw.jpg\n") << 0;
        QTest::addRow("too large")
            << QByteArray("-r 1 a b 99999999999999999999 pw.jpg\n") << 2147483647;
        QTest::addRow("empty") << QByteArray() << 0;
    }
    void FindsSizesInListings() {
        QFETCH(QByteArray, listing);
        QTEST(SizeInListing(listing, QStringLiteral("pw.jpg")), "size");
    }

    void KnowsControlCharacters() {
        QVERIFY(!HasControlCharacters(QStringLiteral("a $@:!§ü~\u0080")));
        for (const QChar character : {QChar(0), QChar('\t'), QChar('\r'), QChar(0x1F), QChar(0x7F)})
            QVERIFY(HasControlCharacters(u'a' + QString(character)));
    }

    void ReadsOtherEncodings() {
        QCOMPARE(FromServer("550 für"), QStringLiteral("550 für"));
        QCOMPARE(FromServer("550 f\xFCr"), QStringLiteral("550 für"));
    }

    void KeepsTheLastError() {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QCOMPARE(LastErrorStore::Code(), QString());
        LastErrorStore::Write(1510, QStringLiteral("überschritten \"x\"\r\n"));
        QCOMPARE(LastErrorStore::Code(), QStringLiteral("1510"));
        QCOMPARE(LastErrorStore::Text(), QStringLiteral("überschritten \"x\"\r\n"));
        // Where another program would look for it.
        const QSettings store(QSettings::IniFormat, QSettings::UserScope, "Stillpost",
                              "FTP Control 1.01");
        QCOMPARE(store.childGroups(), QStringList{QString(QChar(u'\0'))});
    }
};

QTEST_GUILESS_MAIN(TestFtpValues)
#include "test_ftp_values.moc"
