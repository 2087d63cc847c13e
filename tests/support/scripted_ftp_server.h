#pragma once

#include "base/clock.h"

#include <QMap>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>

#include <functional>

// What the scripted server does wrong, or otherwise, at one command.
struct FtpFault {
    // The command; "CONNECT" is the greeting, "DONE" the reply at the end of a transfer.
    QString Verb;
    int Occurrence = 0;         // the n-th time it comes, from 1; 0: every time
    QStringList Chunks = {};    // sent in place of the reply, one after another, a byte for
                                // each character
    int DelayMilliseconds = 0;  // of the clock, before the reply
    bool Silent = false;        // no reply
    bool CloseControl = false;  // the connection is closed after the reply
    // The transfer is announced, but nobody connects, or at EPSV listens, or at AUTH encrypts.
    bool NoDataConnection = false;
    int DataBytes = -1;   // the data connection is closed after so many bytes
    int AwaySeconds = 0;  // closes everything, and takes connections again after so long
    // The data connection comes from this address; when it is closed without a byte, another one
    // comes from the server's own.
    QString DataFrom = {};
};

// Answers the command with this, in as many chunks as there are.
inline FtpFault Says(const QString& verb, const QStringList& chunks) {
    return {.Verb = verb, .Chunks = chunks};
}

// Closes the connection in place of a reply.
inline FtpFault Closes(const QString& verb) {
    return {.Verb = verb, .Silent = true, .CloseControl = true};
}

// Dies in place of the n-th reply, and is back after so long.
inline FtpFault Dies(const QString& verb, int occurrence, int seconds) {
    return {.Verb = verb, .Occurrence = occurrence, .Silent = true, .AwaySeconds = seconds};
}

class ScriptedFtpSession;

// Its connections can be encrypted where Tls.
class ScriptedListener : public QTcpServer {
  public:
    bool Tls = false;
    // With the key of TestCertificates.
    static void Encrypt(QTcpSocket* socket, const QByteArray& certificate);

  protected:
    void incomingConnection(qintptr descriptor) override;
};

// A well-behaved little FTP server in this process, with its files in memory, that misbehaves as
// its script says. A script is a few lines of a test:
//     server.Script = {{.Verb = "STOR", .Occurrence = 2, .Chunks = {"550 no\r\n"}}};
// Paths in Files and Folders start without a slash.
class ScriptedFtpServer : public QObject {
    Q_OBJECT

  public:
    // Listens at a free port.
    explicit ScriptedFtpServer(Clock& clock, const QHostAddress& address = QHostAddress::LocalHost);
    ~ScriptedFtpServer() override;

    [[nodiscard]] quint16 Port() const { return port; }

    // Takes connections with TLS from now on, of the certificate in PEM: after AUTH, or at once.
    void SetTls(const QByteArray& certificate, bool atOnce);

    // Closes the control connections, as a server does with idle ones.
    void DropControl();
    // Refuses connections, and takes them again at the same port.
    void StopListening();
    void ListenAgain();
    // All of this, for so long.
    void GoAway(int seconds);

    QList<FtpFault> Script;
    // Asked at each command that the script says nothing of.
    std::function<FtpFault(const QString& verb)> Whim;
    QMap<QString, QByteArray> Files;
    QStringList Folders;                   // besides the root
    bool AnyFolder = false;                // CWD goes anywhere
    QString Password;                      // empty: any
    bool RefuseRenameOver = false;         // RNTO over an existing file is a 550
    bool RepliesBeforeConnecting = false;  // 150 first, then the data connection
    QString PasvAddress = QStringLiteral("127,0,0,1");

    QByteArray Certificate;      // see SetTls
    QByteArray DataCertificate;  // of the data connections, which are not encrypted without
    bool TlsAtOnce = false;

    QStringList Commands;     // every line received, in order, over all connections
    int Connections = 0;      // control connections so far
    int OpenConnections = 0;  // control connections now
    int DataConnections = 0;  // data connections so far
    qint64 BackSince = 0;     // when it came back last; milliseconds of the clock

    // The fault that the script has for this occurrence of the verb.
    [[nodiscard]] FtpFault Meet(const QString& verb);
    [[nodiscard]] Clock& OwnClock() const { return clock; }

  private:
    void Take();

    Clock& clock;
    QHostAddress address;
    ScriptedListener listener;
    quint16 port = 0;
    Timer back;
    QMap<QString, int> met;
    QList<QPointer<ScriptedFtpSession>> sessions;
};
