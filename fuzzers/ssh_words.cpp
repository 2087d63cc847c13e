#include "net/sftp/ssh_words.h"

#include "fuzzer.h"

const Fuzzer sshWords("ssh_words", [](const QByteArray& bytes) {
    const QStringList lines = QString::fromUtf8(bytes).split(u'\n');
    for (const bool ownKey : {false, true}) {
        const ServerAnswer answer = SshWords::Judge(lines, ownKey);
        MUST(!answer.Fine() && answer.Reply.size() <= bytes.size());
    }
});
