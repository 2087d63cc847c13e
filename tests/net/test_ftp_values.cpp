#include "net/block_plan.h"
#include "net/ftp_reply.h"
#include "net/ftp_text.h"
#include "net/last_error_store.h"
#include "net/listing.h"
#include "support/data_rows.h"

#include <QSettings>
#include <QTemporaryDir>

class TestFtpValues : public QObject {
    Q_OBJECT

  private slots:
    void PlansBlocks_data() {
        // block size, full blocks, remainder
        Rows<qint32, QList<qint32>>({{0, {0, 0, 0}},
                                     {999, {999, 1, 0}},
                                     {1196, {1196, 1, 0}},
                                     {5000, {4196, 1, 804}},
                                     {8196, {8196, 1, 0}},
                                     {16392, {8196, 2, 0}},
                                     {2147483647, {8196, 262016, 511}}});
    }
    void PlansBlocks() {
        const auto [total, expected] = Row<qint32, QList<qint32>>();
        const BlockPlan plan = BlockPlan::For(total);
        QCOMPARE((QList<qint32>{plan.BlockSize, plan.FullBlocks, plan.Remainder}), expected);
    }

    void AnnouncesPorts() {
        const QHostAddress address(QStringLiteral("192.168.0.5"));
        QCOMPARE(PortArgument(address, 1035), QStringLiteral("192,168,0,5,4,11"));
        QCOMPARE(PortArgument(address, 65280), QStringLiteral("192,168,0,5,255,0"));
    }

    void JoinsReplyLines_data() {
        const Rows<QStringList, QList<int>, bool> row;
        const QList<int> both{220, 230};
        row("two in one chunk", {"220 a\r\n230 b\r\n"}, both, false);
        row("cut in the code", {"2", "20 a\r\n23", "0 b\n"}, both, false);
        row("several lines", {"220-a\r\n", "230 users\r\n 530 no\r\n220-b\r\n220 c\r\n"}, {220},
            false);
        row("last line to come", {"220-a\r\n220"}, {220}, true);
        row("code alone", {"230\n"}, {230}, false);
        row("no code", {"\r\nhello\r\n99\r\n099 x\r\n-12 x\r\n"}, {}, false);
    }
    void JoinsReplyLines() {
        const auto [chunks, codes, unfinished] = Row<QStringList, QList<int>, bool>();
        ReplyLines lines;
        for (const QString& chunk : chunks) lines.Feed(chunk);
        QCOMPARE(lines.Codes, codes);
        QCOMPARE(lines.Unfinished(), unfinished);
    }

    void FindsSizesInListings_data() {
        const Rows<QByteArray, qint32> row;
        row("unix",
            QByteArray("total 8\r\n"
                       "-rw-r--r--   1 cam  users    12345 Jan  1 10:00 pw.jpg\r\n"
                       "-rw-r--r--   1 cam  users        7 Jan  1 10:00 1pw.jpg\r\n"),
            12345);
        row("bare line ends", "-r 1 a b 5 Jan 1 1 pw.jpg\n-r 1 a b 6 J 1 1 x\n", 5);
        row("last of a name counts", "-r 1 a b 5 x pw.jpg\n-r 1 a b 6 x pw.jpg", 6);
        row("other case", "-r 1 a b 5 x PW.JPG\n", 0);
        row("columns missing", "pw.jpg\n5 pw.jpg\n", 0);
        row("no number", "-r 1 a b c pw.jpg\n", 0);
        row("too large", "-r 1 a b 99999999999999999999 pw.jpg\n", 2147483647);
    }
    void FindsSizesInListings() {
        const auto [listing, size] = Row<QByteArray, qint32>();
        QCOMPARE(SizeInListing(listing, QStringLiteral("pw.jpg")), size);
    }

    void KnowsControlCharactersAndOtherEncodings() {
        QCOMPARE(FromServer("550 für"), QStringLiteral("550 für"));
        QCOMPARE(FromServer("550 f\xFCr"), QStringLiteral("550 für"));
        QVERIFY(!HasControlCharacters(QStringLiteral("a $@:!§ü~\u0080")));
        for (const QChar character : {QChar(0), QChar('\t'), QChar('\r'), QChar(0x1F), QChar(0x7F)})
            QVERIFY(HasControlCharacters(u'a' + QString(character)));
    }

    void KeepsTheLastError() {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        LastErrorStore::Write(0, {});
        QCOMPARE(LastErrorStore::Text(), QString());
        LastErrorStore::Write(1510, QStringLiteral("überschritten \"x\"\r\n"));
        QCOMPARE(LastErrorStore::Code(), QStringLiteral("1510"));
        QCOMPARE(LastErrorStore::Text(), QStringLiteral("überschritten \"x\"\r\n"));
    }
};

QTEST_GUILESS_MAIN(TestFtpValues)
#include "test_ftp_values.moc"
