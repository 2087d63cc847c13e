#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// A server of the system as a process of its own on a free port of 127.0.0.1, with a root folder
// of its own, so that the client meets the manners of real servers. It uses no wait of the
// program. Ended, with its children, by the destructor.
class RealServer {
  public:
    // script: a program of tests/support, which gets the server's folder, the port and these
    // arguments.
    RealServer(const QString& script, const QStringList& arguments);
    ~RealServer() { Stop(); }
    RealServer(const RealServer&) = delete;
    RealServer& operator=(const RealServer&) = delete;

    // Starts the server, again after Stop, and returns once it takes connections. False, with
    // WhyNot set, when this machine cannot run it.
    [[nodiscard]] bool Start();
    // Ends it with all its connections, as a power cut would; Start may follow.
    void Stop();
    [[nodiscard]] QString WhyNot() const { return whyNot; }

    [[nodiscard]] quint16 Port() const { return port; }
    // Where its own files lie; what there is says its script.
    [[nodiscard]] QString Own(const QString& name) const { return folder.filePath(name); }
    // The server's root folder, with a separator at its end.
    [[nodiscard]] QString Root() const { return folder.filePath(QStringLiteral("root/")); }

  private:
    [[nodiscard]] bool Answers() const;

    QTemporaryDir folder;
    QProcess process;
    quint16 port = 0;
    QString whyNot;
};
