#include "support/scripted_web_server.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QUrl>

#include <utility>

QString TestCertificate(const QString& name) {
    return QStringLiteral(STILLPOST_CERTIFICATES "/") + name;
}

ScriptedWebServer::ScriptedWebServer(const QString& ownCertificate) : certificate(ownCertificate) {
    listen(QHostAddress::LocalHost);
}

QByteArray ScriptedWebServer::Full(const QByteArray& statusAndHeaders, const QByteArray& body) {
    return "HTTP/1.1 " + statusAndHeaders +
           "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QStringList ScriptedWebServer::Said() const {
    QStringList said;
    for (const Asked& asked : Questions)
        said << QString::fromLatin1(asked.Verb + ' ' + asked.Target);
    return said;
}

void ScriptedWebServer::DropAll() {
    const QList<QTcpSocket*> sockets = unread.keys();
    for (QTcpSocket* socket : sockets) socket->disconnectFromHost();
}

void ScriptedWebServer::incomingConnection(qintptr descriptor) {
    auto* const socket = new QSslSocket(this);
    socket->setSocketDescriptor(descriptor);
    ++Connections;
    unread[socket] = {};
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Receive(*socket); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        unread.remove(socket);
        socket->deleteLater();
    });
    for (const WebFault& fault : std::as_const(Script))
        if (fault.Verb == "CONNECT") return Send(*socket, fault);
    if (certificate.isEmpty()) return;
    QFile key(TestCertificate("key.pem"));
    if (!key.open(QIODevice::ReadOnly)) return;
    socket->setPrivateKey(QSslKey(&key, QSsl::Ec));
    socket->setLocalCertificate(QSslCertificate::fromPath(TestCertificate(certificate)).value(0));
    socket->startServerEncryption();
}

void ScriptedWebServer::Receive(QTcpSocket& socket) {
    QByteArray& bytes = unread[&socket];
    bytes += socket.readAll();
    for (;;) {
        const qsizetype end = bytes.indexOf("\r\n\r\n");
        if (end < 0) return;
        QByteArrayList lines = bytes.left(end).split('\n');
        const QByteArrayList words = lines.takeFirst().split(' ');
        Asked asked{.Verb = words.value(0), .Target = words.value(1), .Headers = {}, .Body = {}};
        for (const QByteArray& line : std::as_const(lines)) {
            const qsizetype colon = line.indexOf(':');
            asked.Headers[line.left(colon).toLower()] = line.mid(colon + 1).trimmed();
        }
        const qsizetype length = asked.Headers.value("content-length").toLongLong();
        if (bytes.size() < end + 4 + length) return;
        asked.Body = bytes.mid(end + 4, length);
        bytes.remove(0, end + 4 + length);
        Questions << asked;
        Meet(socket, asked);
        if (!unread.contains(&socket)) return;
    }
}

void ScriptedWebServer::Meet(QTcpSocket& socket, const Asked& asked) {
    const int occurrence = ++met[asked.Verb];
    for (const WebFault& fault : std::as_const(Script))
        if (fault.Verb == asked.Verb && (fault.Occurrence == 0 || fault.Occurrence == occurrence))
            return Send(socket, fault);
    socket.write(Answer(asked));
}

void ScriptedWebServer::Send(QTcpSocket& socket, const WebFault& fault) {
    if (fault.Raw) {
        QTcpSocket beside;
        beside.setSocketDescriptor(socket.socketDescriptor(), QTcpSocket::ConnectedState,
                                   QIODevice::WriteOnly);
        beside.write(fault.Answer);
        beside.flush();
        socket.abort();
        return;
    } else if (!fault.Silent) {
        const bool full = fault.Verb == "CONNECT" || fault.Answer.startsWith("HTTP/") ||
                          fault.Answer.isEmpty() || !QByteArray("12345").contains(fault.Answer[0]);
        socket.write(full ? fault.Answer : Full(fault.Answer));
    }
    if (fault.Endless)
        connect(&socket, &QTcpSocket::bytesWritten, this, [&socket, text = fault.Answer] {
            if (socket.bytesToWrite() == 0) socket.write(text.repeated(100));
        });
    if (fault.Close) socket.disconnectFromHost();
}

QByteArray ScriptedWebServer::Answer(const Asked& asked) {
    const bool there = Files.contains(asked.Target);
    const QByteArray made = there ? "204 No Content" : "201 Created";
    if (asked.Verb == "PUT") {
        Files[asked.Target] = asked.Body;
        return Full(made);
    }
    if (asked.Verb == "PROPFIND") return Full("207 Multi-Status", "<multistatus/>");
    if (!there) return Full("404 Not Found");
    if (asked.Verb == "GET") return Full("200 OK", Files.value(asked.Target));
    const QByteArray target = asked.Headers.value("destination");
    const QByteArray path = QUrl::fromEncoded(target).path(QUrl::FullyEncoded).toLatin1();
    if (asked.Verb == "MOVE" || asked.Verb == "COPY") Files[path] = Files.value(asked.Target);
    if (asked.Verb == "MOVE" || asked.Verb == "DELETE") Files.remove(asked.Target);
    return Full("204 No Content");
}
