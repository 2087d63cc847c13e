#pragma once

#include "support/real_server.h"

// An FTP or SSH server of the system.
class RealFtpServer : public RealServer {
  public:
    enum class Kind { Vsftpd, Pyftpdlib, Sshd };

    // vsftpd and sshd log in as user of the system: its name must be one, and its permissions
    // count. tls: "TLSv1.2" or "TLSv1.3", with the good one of TestCertificates; empty: none.
    explicit RealFtpServer(Kind kind, const QString& user = QStringLiteral("cam"),
                           const QString& password = QStringLiteral("secret"),
                           const QString& tls = {});
};
