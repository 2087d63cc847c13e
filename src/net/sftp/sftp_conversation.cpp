#include "net/sftp/sftp_conversation.h"

#include <QString>

#include <algorithm>
#include <utility>

using namespace Sftp;

SftpConversation::SftpConversation(std::function<void(const QByteArray&)> send)
    : write(std::move(send)) {}

void SftpConversation::Begin() {
    write(Request(Kind::Init, ProtocolVersion).Bytes());
}

void SftpConversation::Receive(const QByteArray& bytes) {
    if (broken) return;
    incoming.Add(bytes);
    while (const std::optional<Reply> reply = incoming.Next()) {
        Sort(*reply);
        if (broken) return;
    }
    broken = incoming.Broken();
}

void SftpConversation::Sort(const Reply& reply) {
    if (!greeted) {
        greeted = reply.Is == Kind::Version && reply.Id >= ProtocolVersion;
        broken = !greeted;
        extensions = reply.Extensions;
    } else if (reply.Is != Kind::Version && awaited.erase(reply.Id) > 0) {
        answers.emplace(reply.Id, reply);
    } else if (reply.Is != Kind::Version && unwanted.erase(reply.Id) > 0) {
        // A file that was opened for somebody who no longer waited.
        if (reply.Is != Kind::Handle) return;
        const Request close = New(Kind::Close).Text(reply.Text);
        unwanted.insert(close.Id());
        write(close.Bytes());
    } else {
        broken = true;
    }
}

QString SftpConversation::Nonsense() const {
    constexpr qsizetype enough = 80;
    QString text;
    for (const char letter : incoming.Rest().first(std::min(enough, incoming.Rest().size())))
        text += letter >= ' ' && letter <= '~' ? QLatin1Char(letter) : QLatin1Char(' ');
    return text.simplified();
}

void SftpConversation::Ask(const Request& request) {
    awaited.insert(request.Id());
    write(request.Bytes());
}

Reply SftpConversation::Take(quint32 id) {
    return answers.extract(id).mapped();
}

void SftpConversation::Forget() {
    unwanted.merge(awaited);
    awaited.clear();
    for (const auto& [id, reply] : std::exchange(answers, {})) {
        unwanted.insert(id);
        Sort(reply);
    }
}
