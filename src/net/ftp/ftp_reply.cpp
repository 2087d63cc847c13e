#include "net/ftp/ftp_reply.h"

#include "base/profile_file.h"

namespace {
constexpr int codeLength = 3;
}

int ReplyCodeOf(const QString& text) {
    return ValLong(text.left(codeLength));
}

void ReplyLines::Feed(const QString& chunk) {
    for (const QChar character : chunk) {
        if (character == u'\n') {
            TakeLine();
            line.clear();
            skipped = false;
        } else if (!skipped && line.size() <= codeLength) {
            line += character;
        }
    }
}

void ReplyLines::Reset() {
    *this = {};
}

void ReplyLines::Forget() {
    Codes.clear();
    late = 0;
    asked = true;
}

void ReplyLines::CountOpen() {
    TakeLine();
    skipped = skipped || !line.isEmpty();
    line.clear();
    if (late != 0) Codes << late;
    if (openReply != 0) {
        Codes << openReply;
        counted = openReply;
        asked = false;
    }
    late = openReply = 0;
}

void ReplyLines::TakeLine() {
    if (line.size() < codeLength) return;
    bool numeric = false;
    const int code = line.left(codeLength).toInt(&numeric);
    if (!numeric || code < 100 || (openReply != 0 && code != openReply)) return;
    // The character after the code tells whether more lines follow.
    const bool more = line.size() > codeLength && line[codeLength] == u'-';
    openReply = more ? code : 0;
    late = 0;
    if (code != counted) counted = 0;
    if (more) return;
    if (counted == 0)
        Codes << code;
    else if (asked)
        late = code;
    counted = 0;
}
