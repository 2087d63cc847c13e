#pragma once

#include "net/ftp/ftp_commands.h"

// Connects to the server that the properties name, encrypts the connection where they say so, and
// logs in; no name or password is sent before the server has proved who it is. False, with a last
// error recorded and the connection closed, when the server cannot be reached, does not greet
// within the time-out or refuses the login. Once the password is sent there is no time limit: some
// servers take long over a login, and the wait ends when the connection does.
[[nodiscard]] bool LogIn(FtpCommands& commands, const FtpProperties& properties);
