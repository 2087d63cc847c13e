#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>

// The argument of PORT for an IPv4 address and a port: 192,168,0,5,4,11.
[[nodiscard]] QString PortArgument(const QHostAddress& address, quint16 port);

// The argument of EPRT (RFC 2428) for an IPv6 address and a port: |2|2001:db8::5|1035|.
[[nodiscard]] QString EprtArgument(const QHostAddress& address, quint16 port);

// Whether the text has a control character in it. On the wire one would end the command early and
// start another, so no such text is ever sent.
[[nodiscard]] bool HasControlCharacters(const QString& text);

// What a server sent, as text: each line in UTF-8 where it is valid as a whole, else in Latin-1.
[[nodiscard]] QString FromServer(const QByteArray& bytes);

// How many bytes at the end may be the beginning of a UTF-8 character whose rest is still to come.
[[nodiscard]] qsizetype CutCharacter(const QByteArray& bytes);
