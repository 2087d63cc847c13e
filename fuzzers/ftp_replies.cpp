#include "fuzzer.h"
#include "net/ftp/ftp_reply.h"
#include "net/ftp/ftp_text.h"
#include "net/ftp/listing.h"

namespace {

struct Read {
    QList<int> Codes;
    QString Text;
};

// The codes of all replies in what a server has sent, which ends behind a line.
Read ReadReplies(const QByteArray& bytes, bool cut) {
    ReplyLines lines;
    QString text;
    QByteArray received;
    const auto take = [&](const QByteArray& piece) {
        received += piece;
        const qsizetype rest = CutCharacter(received);
        MUST(rest >= 0 && rest <= 3 && rest <= received.size());
        const QString chunk = FromServer(received.chopped(rest));
        text += chunk;
        lines.Feed(chunk);
        received = received.last(rest);
    };
    if (cut)
        InPieces(bytes, take);
    else
        take(bytes);
    return {lines.Codes, text};
}

}  // namespace

// What a server says does not hang on where the network cuts it.
const Fuzzer ftpReplies("ftp_replies", [](const QByteArray& bytes) {
    const QByteArray whole = bytes + '\n';
    const Read read = ReadReplies(whole, false);
    const Read pieces = ReadReplies(whole, true);
    MUST(pieces.Codes == read.Codes);
    MUST(pieces.Text == read.Text || !whole.isValidUtf8());
    for (const int code : read.Codes) MUST(code >= 100 && code <= 999);
    // What had begun when its time was up swallows nothing that comes later.
    ReplyLines late;
    late.Feed(FromServer(bytes));
    late.CountOpen();
    late.Feed("\n200 x\n");
    MUST(late.Codes.endsWith(200));
    MUST(SizeInListing(bytes, "pw.jpg") >= 0);
    const QByteArray last = "\n-rw-r--r-- 1 u g 4711 Nov 22 10:00 pw.jpg\r\n";
    MUST(SizeInListing(bytes + last, "pw.jpg") == 4711);
});
