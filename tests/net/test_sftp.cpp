#include "net/sftp/sftp_conversation.h"
#include "support/data_rows.h"

namespace {

QByteArray Bytes(const char* hex) {
    return QByteArray::fromHex(hex);
}

}  // namespace

class TestSftp : public QObject {
    Q_OBJECT

  private slots:
    void CutsRepliesOutOfAnyBytes_data() {
        const Rows<QByteArray, int, bool> row;
        row("two in one chunk", Bytes("00000005 02 00000003" "0000000d 65 00000001 00000004 00000000"), 2,
            false);
        row("status without words", Bytes("00000009 65 00000001 00000000"), 1, false);
        row("in the middle", Bytes("00000009 65 000000"), 0, false);
        row("no length yet", Bytes("0000"), 0, false);
        row("empty", Bytes("00000000"), 0, true);
        row("giant", Bytes("fffffff0 65"), 0, true);
        row("text instead", "Welcome", 0, true);
        row("kind that nobody asked for", Bytes("00000005 67 00000001"), 0, true);
        row("words beyond the end", Bytes("0000000d 65 00000001 00000004 ffffffff"), 0, true);
        row("attributes cut off", Bytes("00000009 69 00000001 00000005"), 0, true);
        row("handle too long", Bytes("0000010a 66 00000001 00000101") + QByteArray(0x101, 'x'), 0,
            true);
    }
    void CutsRepliesOutOfAnyBytes() {
        const auto [bytes, count, broken] = Row<QByteArray, int, bool>();
        // All at once, and byte by byte.
        for (const qsizetype step : {bytes.size(), qsizetype{1}}) {
            Sftp::Replies replies;
            int found = 0;
            for (qsizetype at = 0; at < bytes.size(); at += step) {
                replies.Add(bytes.mid(at, step));
                while (replies.Next()) ++found;
            }
            QCOMPARE(found, count);
            QCOMPARE(replies.Broken(), broken);
        }
    }

    void KeepsTheConversationInOrder() {
        QByteArray said;
        SftpConversation talk([&](const QByteArray& bytes) { said = bytes; });
        talk.Begin();
        QCOMPARE(said, Bytes("00000005 01 00000003"));
        talk.Receive(Bytes("00000005 02 00000003"));
        const Sftp::Request open = talk.New(Sftp::Kind::Open).Text("a").Number(2).LongNumber(1);
        talk.Ask(open);
        QCOMPARE(said, Bytes("00000016 03 00000001 00000001 61 00000002 0000000000000001"));
        talk.Forget();
        // The file is open, and nobody waits for it any more.
        talk.Receive(Bytes("0000000a 66 00000001 00000001 68"));
        QCOMPARE(said, Bytes("0000000a 04 00000002 00000001 68"));
        QVERIFY(!talk.Broken());
        talk.Receive(Bytes("00000009 65 00000007 00000000"));
        QVERIFY(talk.Broken());
    }
};

QTEST_GUILESS_MAIN(TestSftp)
#include "test_sftp.moc"
