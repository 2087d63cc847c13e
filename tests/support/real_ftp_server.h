#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// An FTP server of the system as a process of its own on a free port of 127.0.0.1, with a root
// folder of its own, so that the client meets the manners of real servers. It uses no wait of the
// program. Ended, with its children, by the destructor.
class RealFtpServer {
  public:
    enum class Kind { Vsftpd, Pyftpdlib };

    // vsftpd logs in as user of the system: its name must be one, and its permissions count.
    // tls: "TLSv1.2" or "TLSv1.3", with the good one of TestCertificates; empty: none.
    explicit RealFtpServer(Kind kind, const QString& user = QStringLiteral("cam"),
                           const QString& password = QStringLiteral("secret"),
                           const QString& tls = {});
    ~RealFtpServer();
    RealFtpServer(const RealFtpServer&) = delete;
    RealFtpServer& operator=(const RealFtpServer&) = delete;

    // Starts the server and returns once it takes connections. False, with WhyNot set, when this
    // machine cannot run it.
    [[nodiscard]] bool Start();
    [[nodiscard]] QString WhyNot() const { return whyNot; }

    [[nodiscard]] quint16 Port() const { return port; }
    // The server's root folder, with a separator at its end.
    [[nodiscard]] QString Root() const { return folder.filePath(QStringLiteral("root/")); }

  private:
    QTemporaryDir folder;
    QProcess process;
    quint16 port = 0;
    QString whyNot;
};
