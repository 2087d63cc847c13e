#pragma once

#include <QMap>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

// What the scripted web server does in place of an answer.
struct WebFault {
    QByteArray Verb;         // "CONNECT": before any question
    QByteArray Answer = {};  // sent as it is; "403 No": with a length and no body
    int Occurrence = 0;      // the n-th time the verb comes, from 1; 0: every time
    bool Silent = false;     // no answer
    bool Close = false;      // the connection is closed, after the answer
    bool Endless = false;    // the answer is sent again and again
    bool Raw = false;        // beside the encryption
};

// A little web server in this process with WebDAV, its files in memory, that misbehaves as its
// script says. Answers whatever the name and password.
class ScriptedWebServer : public QTcpServer {
    Q_OBJECT

  public:
    struct Asked {
        QByteArray Verb;
        QByteArray Target;
        QMap<QByteArray, QByteArray> Headers;  // names in lower case
        QByteArray Body;
    };
    // Listens at a free port of 127.0.0.1. certificate: a file of tests/support/certificates;
    // empty: unencrypted.
    explicit ScriptedWebServer(const QString& certificate = {});
    // The fault of a Script row whose Answer is only a status line: with what follows.
    static QByteArray Full(const QByteArray& statusAndHeaders, const QByteArray& body = {});

    QList<WebFault> Script;
    QMap<QByteArray, QByteArray> Files;  // by target
    QList<Asked> Questions;              // in order
    int Connections = 0;

    // "PUT /a", "MOVE /a" …
    [[nodiscard]] QStringList Said() const;
    void DropAll();

  protected:
    void incomingConnection(qintptr descriptor) override;

  private:
    void Receive(QTcpSocket& socket);
    void Meet(QTcpSocket& socket, const Asked& asked);
    [[nodiscard]] QByteArray Answer(const Asked& asked);
    void Send(QTcpSocket& socket, const WebFault& fault);

    QString certificate;
    QMap<QByteArray, int> met;
    QMap<QTcpSocket*, QByteArray> unread;
};

// A file of tests/support/certificates.
[[nodiscard]] QString TestCertificate(const QString& name);
