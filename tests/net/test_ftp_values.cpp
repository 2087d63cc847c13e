#include "net/ftp_reply.h"
#include "net/ftp_text.h"
#include "net/listing.h"
#include "support/data_rows.h"

class TestFtpValues : public QObject {
    Q_OBJECT

  private slots:
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
};

QTEST_GUILESS_MAIN(TestFtpValues)
#include "test_ftp_values.moc"
