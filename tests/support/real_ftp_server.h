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

    struct Options {
        // vsftpd logs in as user of the system: its name must be one, and its permissions count.
        QString User = QStringLiteral("cam");
        QString Password = QStringLiteral("secret");
        int IdleSeconds = 300;  // a connection idle for so long is closed
        bool KnowsSize = true;  // false: SIZE is an unknown command (pyftpdlib only)
        QString Banner = {};    // lines of the greeting; empty: the server's own
    };

    explicit RealFtpServer(Kind which) : RealFtpServer(which, Options()) {}
    RealFtpServer(Kind which, const Options& wanted);
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
    bool StartVsftpd();
    bool StartPyftpdlib();
    bool Launch(const QString& program, const QStringList& arguments);
    QString WriteFile(const QString& name, const QString& content, bool secret = false);
    QString VsftpdSettings();

    Kind kind;
    Options options;
    QTemporaryDir folder;
    QProcess process;
    quint16 port = 0;
    QString whyNot;
};
