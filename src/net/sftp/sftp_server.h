#pragma once

#include "net/picture_server.h"
#include "net/sftp/sftp_conversation.h"
#include "net/sftp/ssh_connection.h"

#include <memory>

class QFile;

// An SSH server that takes files, reached through the system's OpenSSH: the user's configuration,
// keys, agent, ways over other machines and known servers count as for any other program. Where the
// operator has accepted a host key (Trusted), that one alone counts; it is kept in the program
// folder.
class SftpServer : public PictureServer {
    Q_OBJECT

  public:
    // program: empty for the system's.
    explicit SftpServer(const Surroundings& surroundings, const SshProgram& program = {});

    [[nodiscard]] bool IsOpen() const override;
    void Close() override;
    [[nodiscard]] bool Replaces() const override;
    [[nodiscard]] std::optional<bool> ChangeMode(const QString& name, const QString& mode) override;

  protected:
    [[nodiscard]] ServerAnswer DoOpen() override;
    [[nodiscard]] ServerAnswer DoSend(const QString& localPath, const QString& name) override;
    [[nodiscard]] ServerAnswer DoRename(const QString& from, const QString& to) override;
    // The picture stays under its first name where the server can give it a second one.
    [[nodiscard]] ServerAnswer DoKeep(const QString& from, const QString& to) override;
    [[nodiscard]] ServerAnswer DoDelete(const QString& name) override;
    [[nodiscard]] ServerAnswer DoLook(const QString& name, QByteArray& beginning) override;

  private:
    struct Answered {
        ServerAnswer Lost = {};  // why no answer came; where one did, it is fine
        Sftp::Reply Reply = {};
    };

    void Begin();
    [[nodiscard]] ServerAnswer EnterFolder();
    [[nodiscard]] Sftp::Request New(Sftp::Kind kind);
    // Until done, which is asked only while there is a conversation.
    [[nodiscard]] ServerAnswer AwaitAnswers(const std::function<bool()>& done, int seconds);
    // words: for the log.
    [[nodiscard]] Answered Ask(const QString& words, const Sftp::Request& request, int seconds);
    [[nodiscard]] Answered Remove(const QString& name, int seconds);
    [[nodiscard]] Answered NameAnew(const QByteArray& extension, const QString& from,
                                    const QString& to);
    [[nodiscard]] ServerAnswer RenamePlainly(const QString& from, const QString& to);
    [[nodiscard]] ServerAnswer SendContent(QFile& file, const QByteArray& handle, int seconds);
    [[nodiscard]] QByteArray PathOf(const QString& name) const;

    QString folder;  // of the connection that stands
    SshConnection connection;
    std::unique_ptr<SftpConversation> talk;
};
