#pragma once

#include <QString>

// What the host sets before it connects.
struct FtpProperties {
    QString RemoteHost;
    qint32 RemotePort = 21;
    QString UserName;
    QString Password;
    bool Passive = false;           // the client opens the data connections
    bool DataFromAnywhere = false;  // else only the server's own address takes data connections
    qint16 TimeOut = 30;            // seconds
    qint32 LastErrorCode = 0;       // kept for the host; no operation changes these two
    QString LastErrorDesc = QStringLiteral("(n/a)");
};
