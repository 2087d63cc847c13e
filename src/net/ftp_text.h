#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>

// The whole number that a text starts with, blanks before it skipped; 0 when there is none, the
// largest 32-bit number when it is larger than that.
[[nodiscard]] qint32 LeadingNumber(const QString& text);

// The argument of PORT for an IPv4 address and a port: 192,168,0,5,4,11.
[[nodiscard]] QString PortArgument(const QHostAddress& address, quint16 port);

// Whether the text has a control character in it. On the wire one would end the command early and
// start another, so no such text is ever sent.
[[nodiscard]] bool HasControlCharacters(const QString& text);

// What a server sent, as text: UTF-8 where it is valid, else Latin-1.
[[nodiscard]] QString FromServer(const QByteArray& bytes);
