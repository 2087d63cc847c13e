#pragma once

#include "net/server_access.h"

#include <QStringList>

// The system's OpenSSH.
struct SshProgram {
    QString Path = {};
    QStringList First = {};  // arguments in front of all others

    // Empty path: there is none.
    [[nodiscard]] static SshProgram OfSystem();
};

// What it is called with.
namespace SshCommand {

enum class Purpose {
    Session,     // the file transfer; only a known server
    LearnKey,    // writes the key of the server, whatever it is, into the folder it runs in
    ShowConfig,  // prints what the user's configuration makes of it, and ends
};

// A server that is named "-something" would pass for an option.
[[nodiscard]] bool CanName(const QString& server);

// Where an accepted host key is given, only the file HostKeys::FileName in the folder it runs in
// counts; else what the user's configuration says.
[[nodiscard]] QStringList Arguments(const ServerAccess& access, Purpose purpose);

}  // namespace SshCommand

// How OpenSSH names the login when it asks for a password.
struct SshLogin {
    QString Name = {};       // "user@server"
    QString ShortName = {};  // the same, cut as some questions have it
    bool Direct = true;      // nobody else on the way can ask

    // configuration: what Purpose::ShowConfig prints.
    [[nodiscard]] static SshLogin Of(const QString& configuration);
};
