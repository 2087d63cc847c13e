#pragma once

#include "net/server_answer.h"

#include <QStringList>

// What OpenSSH says on standard error, in English, when it ends.
namespace SshWords {

// Why there is no login. ownKey: a key file was to be used and no other. The reply is the line that
// tells it, of host keys the fingerprint where it is said.
[[nodiscard]] ServerAnswer Judge(const QStringList& lines, bool ownKey);

}  // namespace SshWords
