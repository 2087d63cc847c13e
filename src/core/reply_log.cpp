#include "core/reply_log.h"

void ReplyLog::Add(const QTime& time, const QString& reply) {
    constexpr int keptCharacters = 1000;
    text = time.toString("hh:mm:ss") + " : " + reply.trimmed() + "\r\n" + text.left(keptCharacters);
}
