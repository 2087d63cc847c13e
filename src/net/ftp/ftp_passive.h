#pragma once

#include <QString>

#include <optional>

// The port that a server names for a data connection, to be reached at the address of its control
// connection: the one in the reply to PASV is wrong behind address translation, and where it is
// another machine's it is an attack. None: the reply names no port.

// The reply to EPSV (RFC 2428): 229 text (|||port|).
[[nodiscard]] std::optional<quint16> EpsvPort(const QString& reply);

// The reply to PASV (RFC 959): 227 text with six numbers, with or without brackets.
[[nodiscard]] std::optional<quint16> PasvPort(const QString& reply);
