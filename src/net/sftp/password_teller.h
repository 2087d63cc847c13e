#pragma once

#include "net/sftp/ssh_command.h"

#include <QLocalServer>
#include <QObject>

class QProcessEnvironment;

// Tells OpenSSH the password of one login when it asks for it. OpenSSH starts a program for each
// question and reads the answer from it: this program again, which then shows nothing and asks its
// parent over a local socket that only this user can open. So the password stands neither in a
// command line nor in an environment.
class PasswordTeller : public QObject {
    Q_OBJECT

  public:
    struct Secret {
        QString Password = {};  // empty: every question is refused
        SshLogin Login = {};    // who may ask for it
        bool OpensKey = false;  // it may be the passphrase of a key, too
    };
    explicit PasswordTeller(const Secret& secret);

    // What a child process must find for its questions to end here. False: no socket can be had.
    [[nodiscard]] bool Prepare(QProcessEnvironment& environment);

    // A key was to be opened that has a passphrase.
    [[nodiscard]] bool AskedForPassphrase() const { return askedForPassphrase; }

    enum class Question { Password, Passphrase, Foreign };
    // What OpenSSH asks for with these words. Foreign: what the password is no answer to, or what
    // comes from another server than the login's.
    [[nodiscard]] static Question Understand(const QString& words, const SshLogin& login);

  private:
    void OnConnection();
    [[nodiscard]] QString Answer(const QString& question);

    QLocalServer server;
    Secret secret;
    int passwordsTold = 0;
    bool askedForPassphrase = false;
};

// The same program as OpenSSH starts it for a question.
namespace PasswordHelper {

// Whether this process is one.
[[nodiscard]] bool Wanted();
// Prints the answer; the exit status of the process, 1 where there is none. argc, argv: main's.
[[nodiscard]] int Run(int argc, char** argv);

}  // namespace PasswordHelper
