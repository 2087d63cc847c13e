#include "net/ftp_reply.h"

#include "base/profile_file.h"

namespace {
constexpr int codeLength = 3;
}

int ReplyCodeOf(const QString& chunk) {
    return ValLong(chunk.left(codeLength));
}

void ReplyLines::Feed(const QString& chunk) {
    for (const QChar character : chunk) {
        if (character == u'\n') {
            if (!taken) TakeLine();
            line.clear();
            taken = false;
        } else if (!taken) {
            line += character;
            // The character after the code tells whether more lines follow.
            if (line.size() > codeLength) TakeLine();
        }
    }
}

void ReplyLines::Reset() {
    *this = {};
}

void ReplyLines::TakeLine() {
    taken = true;
    if (line.size() < codeLength) return;
    bool numeric = false;
    const int code = line.left(codeLength).toInt(&numeric);
    const bool more = line.size() > codeLength && line[codeLength] == u'-';
    if (!numeric || code < 100 || (openReply != 0 && code != openReply)) return;
    if (openReply == 0) Codes << code;
    openReply = more ? code : 0;
}
