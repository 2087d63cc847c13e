#include "net/sftp/sftp_conversation.h"

#include "fuzzer.h"

#include <QString>

namespace {

// A conversation with ten questions, of which some are no longer wanted.
struct Asked {
    Asked() {
        talk.Begin();
        for (int i = 0; i < 5; ++i) talk.Ask(talk.New(Sftp::Kind::Open));
        talk.Forget();
        for (int i = 0; i < 5; ++i) talk.Ask(talk.New(Sftp::Kind::Stat));
    }
    [[nodiscard]] QByteArray Outcome() {
        QByteArray all = talk.Broken() ? "broken " : talk.Greeted() ? "greeted " : "";
        for (quint32 id = 0; id < 100; ++id) {
            if (!talk.IsAnswered(id)) continue;
            MUST(id > 5 && id <= 10);
            const Sftp::Reply reply = talk.Take(id);
            all += QByteArray::number(id) + ' ' + reply.Text +
                   QByteArray::number(reply.Mode.value_or(0)) + ' ';
        }
        MUST(talk.Nonsense().size() <= 80);
        return all + sent;
    }
    QByteArray sent;
    SftpConversation talk{[this](const QByteArray& bytes) { sent += bytes; }};
};

}  // namespace

const Fuzzer sftp("sftp", [](const QByteArray& bytes) {
    Asked whole;
    whole.talk.Receive(bytes);
    Asked pieces;
    InPieces(bytes, [&](const QByteArray& piece) { pieces.talk.Receive(piece); });
    const QByteArray outcome = whole.Outcome();
    MUST(outcome == pieces.Outcome());
    MUST(outcome.size() <= 20 * bytes.size() + 1000);
});
