#include "net/sftp/ssh_words.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

using enum ServerAnswer::Fault;

struct Words {
    const char* Pattern;
    ServerFault Means;
    bool OfOwnKey = false;  // counts only of a key file that was asked for
};

// The first that stands anywhere in what was said tells the reason: a login that is refused because
// of the key file is refused in the end like any other.
constexpr std::array table{
    Words{"^@ +WARNING: (REMOTE HOST IDENTIFICATION HAS CHANGED|REVOKED HOST KEY)", HostKeyChanged},
    Words{"^No \\S+ host key is known for ", HostKeyUnknown},
    // Of somebody on the way to the server, whom only the user can get to know.
    Words{"^Host key verification failed", SshFailed},
    Words{"^Load key .*: |^Warning: Identity file .* not accessible|^no such identity: |"
          "^Permissions .* are too open",
          KeyNotUsable, true},
    Words{"Could not resolve hostname", HostNotFound},
    Words{"connect to (host|address) .*Connection refused", Refused},
    Words{"timed out during banner exchange|banner line contains invalid characters|"
          "invalid format|Bad packet length|Bad remote protocol version|"
          "message authentication code incorrect|padding error",
          NotThisWay},
    Words{"connect to (host|address) .*timed out", NoAnswer},
    Words{"connect to (host|address) ", Unreachable},
    Words{"^Unable to negotiate with ", EncryptionBroken},
    Words{"Permission denied \\(|Too many authentication failures|^Password change required",
          LoginRefused},
    Words{"subsystem request failed|exchange_identification|^Received disconnect from |"
          "^Connection (closed|reset) by |^Disconnected from ",
          ServerRefused},
    Words{"^Timeout, server .* not responding|closed by remote host|Broken pipe", ConnectionLost},
};

// Each pattern of the table, made ready once.
const QList<QRegularExpression>& Forms() {
    static const QList<QRegularExpression> forms = [] {
        QList<QRegularExpression> made;
        for (const Words& row : table)
            made << QRegularExpression(QString::fromLatin1(row.Pattern),
                                       QRegularExpression::MultilineOption);
        return made;
    }();
    return forms;
}

QString FingerprintIn(const QString& text) {
    static const QRegularExpression fingerprint("SHA256:[A-Za-z0-9+/]{43}");
    return fingerprint.match(text).captured();
}

}  // namespace

ServerAnswer SshWords::Judge(const QStringList& lines, bool ownKey) {
    const QString text = lines.join(u'\n');
    for (qsizetype i = 0; i < Forms().size(); ++i) {
        const Words& row = table.at(static_cast<std::size_t>(i));
        // In all lines at once: most say nothing of the kind.
        if ((row.OfOwnKey && !ownKey) || !Forms().at(i).match(text).hasMatch()) continue;
        const QStringList said = lines.filter(Forms().at(i));
        const bool ofHostKey = row.Means == HostKeyChanged || row.Means == HostKeyUnknown;
        return {row.Means, ofHostKey ? FingerprintIn(text) : said.last()};
    }
    return {SshFailed, lines.isEmpty() ? QString() : lines.last()};
}
