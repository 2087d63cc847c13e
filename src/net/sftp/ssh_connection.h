#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"
#include "net/sftp/ssh_command.h"

#include <QObject>

#include <functional>
#include <optional>

class Clock;
class PasswordTeller;
class SshProcess;

// The way to the file transfer of an SSH server, by the system's OpenSSH: finds out who the server
// is, tells the password, says why it does not come about. What is spoken over it is another's.
class SshConnection : public QObject {
    Q_OBJECT

  public:
    using Condition = std::function<bool()>;
    // Waits for it, at most so many seconds; none: it has come true.
    using Wait = std::function<std::optional<ServerFault>(const Condition& done, int seconds)>;

    // program: empty for the system's.
    SshConnection(Clock& clock, Wait wait, const SshProgram& program);

    // Returns once the server has answered what was said when it Began. Where an accepted key is
    // not at hand, it is fetched from the server, compared and kept.
    [[nodiscard]] ServerAnswer Open(const ServerAccess& access, const Condition& answered);
    [[nodiscard]] bool IsOpen() const;
    void Close();

    void Write(const QByteArray& bytes);
    // What OpenSSH said last; may be empty.
    [[nodiscard]] QString LastLine() const;

  signals:
    // From now on can be written.
    void Began();
    void Output(const QByteArray& bytes);
    void Called(const QString& commandLine);
    void Said(const QString& line);

  private:
    [[nodiscard]] ServerAnswer Connect(const Condition& answered);
    [[nodiscard]] ServerAnswer MeetNewKey(const Condition& answered);
    [[nodiscard]] ServerAnswer LearnLogin(SshLogin& login);
    [[nodiscard]] ServerAnswer WhyNot(const SshProcess& run, const PasswordTeller& teller) const;
    void Start(SshProcess& run, SshCommand::Purpose purpose, PasswordTeller& teller);
    [[nodiscard]] ServerAnswer RunToEnd(SshCommand::Purpose purpose, const QString& folder,
                                        QByteArray& output);
    [[nodiscard]] int SecondsLeft() const;

    Clock& clock;
    Wait await;
    SshProgram given;
    SshProgram program;
    ServerAccess access;
    qint64 patienceEnds = 0;
    SshProcess* process = nullptr;
};
