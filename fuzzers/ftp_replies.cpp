#include "fuzzer.h"
#include "net/ftp/ftp_reply.h"
#include "net/ftp/ftp_text.h"
#include "net/ftp/listing.h"

namespace {

// The codes of all replies in what a server has sent, which ends behind a line.
QList<int> Codes(const QByteArray& bytes, bool cut) {
    ReplyLines lines;
    QByteArray received;
    const auto take = [&](const QByteArray& piece) {
        received += piece;
        const qsizetype rest = CutCharacter(received);
        MUST(rest >= 0 && rest <= 3 && rest <= received.size());
        lines.Feed(FromServer(received.chopped(rest)));
        received = received.last(rest);
    };
    if (cut)
        InPieces(bytes, take);
    else
        take(bytes);
    return lines.Codes;
}

}  // namespace

// What a server says does not hang on where the network cuts it.
const Fuzzer ftpReplies("ftp_replies", [](const QByteArray& bytes) {
    const QByteArray whole = bytes + '\n';
    const QList<int> codes = Codes(whole, false);
    MUST(Codes(whole, true) == codes);
    for (const int code : codes) MUST(code >= 100 && code <= 999);
    MUST(SizeInListing(bytes, "pw.jpg") >= 0);
    const QByteArray last = "\n-rw-r--r-- 1 u g 4711 Nov 22 10:00 pw.jpg\r\n";
    MUST(SizeInListing(bytes + last, "pw.jpg") == 4711);
});
