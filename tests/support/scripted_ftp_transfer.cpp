// The data connections of the scripted server.
#include "support/scripted_ftp_session.h"

void ScriptedFtpSession::StartTransfer(const QString& verb, const QString& argument) {
    const FtpFault fault = server.Meet(verb);
    const QString path = PathOf(argument);
    const bool store = verb == QStringLiteral("STOR");
    if (verb == QStringLiteral("RETR") && !server.Files.contains(path))
        return ReplyAs(fault, QStringLiteral("550 no such file"));
    const bool announced = fault.Chunks.isEmpty() || fault.Chunks.first().startsWith(u'1');
    if (!announced || fault.NoDataConnection || fault.CloseControl)
        return ReplyAs(fault, QStringLiteral("150 opening"));

    outgoing =
        store ? QByteArray() : (verb == QStringLiteral("LIST") ? Listing() : server.Files[path]);
    if (server.RepliesBeforeConnecting) {
        ReplyAs(fault, QStringLiteral("150 opening"));
        // Connects when the client has seen the reply.
        Later(2, [this, fault, store, path] { OpenData(fault, store ? path : QString()); });
    } else {
        OpenData(fault, store ? path : QString());
    }
}

void ScriptedFtpSession::OpenData(const FtpFault& fault, const QString& storePath) {
    data = new QTcpSocket(this);
    connect(data, &QTcpSocket::connected, this, [this, fault, storePath] {
        ++server.DataConnections;
        if (!server.RepliesBeforeConnecting) ReplyAs(fault, QStringLiteral("150 opening"));
        if (storePath.isEmpty())
            SendData(fault);
        else
            ReceiveData(fault, storePath);
    });
    connect(data, &QTcpSocket::errorOccurred, this, [this](QTcpSocket::SocketError error) {
        if (error != QTcpSocket::ConnectionRefusedError) return;
        EndData(QStringLiteral("425 cannot connect"));
    });
    data->connectToHost(QHostAddress::LocalHost, dataPort);
}

void ScriptedFtpSession::SendData(const FtpFault& fault) {
    const bool cut = fault.DataBytes >= 0 && fault.DataBytes < outgoing.size();
    data->write(cut ? outgoing.left(fault.DataBytes) : outgoing);
    connect(data, &QTcpSocket::disconnected, this, [this, cut] {
        EndData(cut ? QStringLiteral("426 aborted") : QStringLiteral("226 complete"));
    });
    data->disconnectFromHost();
}

void ScriptedFtpSession::ReceiveData(const FtpFault& fault, const QString& path) {
    server.Files[path].clear();
    const auto receive = [this, fault, path] {
        QByteArray& file = server.Files[path];
        file += data->readAll();
        if (fault.DataBytes < 0 || file.size() < fault.DataBytes) return;
        file.truncate(fault.DataBytes);
        data->disconnect(this);
        data->abort();
        EndData(QStringLiteral("426 aborted"));
    };
    connect(data, &QTcpSocket::readyRead, this, receive);
    connect(data, &QTcpSocket::disconnected, this,
            [this] { EndData(QStringLiteral("226 complete")); });
    if (fault.DataBytes == 0) receive();
}

void ScriptedFtpSession::EndData(const QString& reply) {
    data->disconnect(this);
    data->deleteLater();
    data = nullptr;
    ReplyAs(server.Meet(QStringLiteral("DONE")), reply);
}

QByteArray ScriptedFtpSession::Listing() const {
    QByteArray listing;
    for (auto file = server.Files.cbegin(); file != server.Files.cend(); ++file) {
        const QString folder = cwd.isEmpty() ? QString() : cwd + u'/';
        const QString name = file.key().mid(folder.size());
        if (!file.key().startsWith(folder) || name.contains(u'/')) continue;
        listing += QStringLiteral("-rw-r--r--   1 cam      users  %1 Jan  1 10:00 %2\r\n")
                       .arg(file.value().size(), 10)
                       .arg(name)
                       .toUtf8();
    }
    return listing;
}
