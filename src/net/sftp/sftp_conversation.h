#pragma once

#include "net/sftp/sftp_packets.h"

#include <functional>
#include <map>
#include <set>

class QString;

// What is asked over one connection and what has been answered, in any order. Knows neither time
// nor connection: bytes go out through a routine and come in through another.
class SftpConversation {
  public:
    explicit SftpConversation(std::function<void(const QByteArray&)> send);

    // The first words. What is asked afterwards may follow at once.
    void Begin();
    void Receive(const QByteArray& bytes);

    // The server has greeted.
    [[nodiscard]] bool Greeted() const { return greeted; }
    // It says what makes no sense; nothing of it counts any more.
    [[nodiscard]] bool Broken() const { return broken; }
    // What makes no sense, as far as people can read it.
    [[nodiscard]] QString Nonsense() const;
    [[nodiscard]] bool Offers(const QByteArray& extension) const {
        return extensions.contains(extension);
    }

    // A request that waits for its parts, and its way to the server.
    [[nodiscard]] Sftp::Request New(Sftp::Kind kind) { return {kind, nextId++}; }
    void Ask(const Sftp::Request& request);

    [[nodiscard]] bool IsAnswered(quint32 id) const { return answers.contains(id); }
    // The answer, which is there, and is forgotten here.
    [[nodiscard]] Sftp::Reply Take(quint32 id);

    // Nobody wants the answers any more that are still to come.
    void Forget();

  private:
    void Sort(const Sftp::Reply& reply);

    std::function<void(const QByteArray&)> write;
    Sftp::Replies incoming;
    quint32 nextId = 1;
    bool greeted = false;
    bool broken = false;
    QByteArrayList extensions;
    std::set<quint32> awaited;
    std::set<quint32> unwanted;
    std::map<quint32, Sftp::Reply> answers;
};
