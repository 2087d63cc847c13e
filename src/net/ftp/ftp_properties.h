#pragma once

#include "net/winsock.h"

#include <QString>

enum class FtpSecurity {
    None,
    Explicit,  // TLS after AUTH (RFC 4217)
    Implicit,  // TLS from the first byte
};

// What the host sets before it connects.
struct FtpProperties {
    QString RemoteHost;
    qint32 RemotePort = 21;
    QString UserName;
    QString Password;
    FtpSecurity Security = FtpSecurity::None;
    QString Trusted;                // see Certificates::Judge
    bool Passive = false;           // the client opens the data connections
    bool DataFromAnywhere = false;  // else only the server's own address takes data connections
    qint16 TimeOut = 30;            // seconds
    Winsock::SocketMaker Sockets;   // of the connections that the client opens; none: the network's
    qint32 LastErrorCode = 0;       // kept for the host; no operation changes these two
    QString LastErrorDesc = QStringLiteral("(n/a)");
};
