#include "support/scripted_ftp_session.h"

#include <QSslSocket>

ScriptedFtpSession::ScriptedFtpSession(ScriptedFtpServer& ownServer, QTcpSocket* socket)
    : server(ownServer), control(socket) {
    control->setParent(this);
    // A reply must not wait until the client's system has acknowledged the one before it.
    control->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    ++server.OpenConnections;
    connect(control, &QTcpSocket::readyRead, this, &ScriptedFtpSession::Read);
    connect(control, &QTcpSocket::disconnected, this, [this] {
        --server.OpenConnections;
        deleteLater();
    });
    if (server.TlsAtOnce) ScriptedListener::Encrypt(control, server.Certificate);
    ReplyAs(server.Meet(QStringLiteral("CONNECT")), QStringLiteral("220 ready"));
}

ScriptedFtpSession::~ScriptedFtpSession() {
    control->disconnect(this);
}

void ScriptedFtpSession::CloseControl() {
    control->disconnectFromHost();
}

void ScriptedFtpSession::Read() {
    input += control->readAll();
    // A TLS handshake, in whose random bytes a line may end, is no command.
    constexpr char handshake = '\x16';
    for (qsizetype end = input.indexOf("\r\n"); end >= 0 && !input.startsWith(handshake);
         end = input.indexOf("\r\n")) {
        const QString line = QString::fromUtf8(input.left(end));
        input.remove(0, end + 2);
        server.Commands << line;
        // A client that sends the next command has read what came before it.
        if (output.isEmpty()) ++pumped, pumping = false;
        Handle(line);
    }
}

void ScriptedFtpSession::Handle(const QString& line) {
    const qsizetype blank = line.indexOf(u' ');
    const QString verb = line.left(blank).toUpper();
    const QString argument = blank < 0 ? QString() : line.mid(blank + 1);
    const bool encrypts = verb == QStringLiteral("AUTH") && !server.Certificate.isEmpty();
    if (encrypts) return StartTls();
    QString usual = HandleLogin(verb, argument);
    if (usual.isEmpty() && !loggedIn) usual = QStringLiteral("530 not logged in");
    if (usual.isEmpty() && verb == QStringLiteral("STOR")) return StartUpload(PathOf(argument));
    if (usual.isEmpty()) usual = HandleFile(verb, argument);
    const FtpFault fault = server.Meet(verb);
    if (fault.NoDataConnection) passive.close();
    ReplyAs(fault, usual);
    if (verb == QStringLiteral("QUIT")) output << Output{{}, true};
    Pump();
}

void ScriptedFtpSession::StartTls() {
    const FtpFault fault = server.Meet(QStringLiteral("AUTH"));
    if (fault.NoDataConnection) return ReplyAs(fault, {});
    control->write(fault.Chunks.value(0, QStringLiteral("234 go\r\n")).toLatin1());
    control->flush();
    ScriptedListener::Encrypt(control, server.Certificate);
}

QString ScriptedFtpSession::HandleLogin(const QString& verb, const QString& argument) {
    if (verb == QStringLiteral("QUIT")) return QStringLiteral("221 bye");
    if (verb == QStringLiteral("NOOP")) return QStringLiteral("200 fine");
    if (verb == QStringLiteral("AUTH")) return QStringLiteral("502 no TLS here");
    if (verb == QStringLiteral("PBSZ")) return QStringLiteral("200 fine");
    if (verb == QStringLiteral("USER")) return QStringLiteral("331 password?");
    if (verb != QStringLiteral("PASS")) return {};
    loggedIn = server.Password.isEmpty() || server.Password == argument;
    return loggedIn ? QStringLiteral("230 welcome") : QStringLiteral("530 wrong");
}

QString ScriptedFtpSession::HandleFile(const QString& verb, const QString& argument) {
    const QString path = PathOf(argument);
    const bool there = server.Files.contains(path);
    if (verb == QStringLiteral("PROT")) {
        protectsData = argument == QStringLiteral("P");
        return QStringLiteral("200 fine");
    }
    if (verb == QStringLiteral("TYPE")) return QStringLiteral("200 type set");
    if (verb == QStringLiteral("CWD")) return ChangeFolder(argument);
    if (verb == QStringLiteral("CDUP")) return ChangeFolder(QStringLiteral(".."));
    if (verb == QStringLiteral("RNTO")) return RenameTo(path);
    if (verb == QStringLiteral("PORT")) {
        const QStringList parts = argument.split(u',');
        if (parts.size() != 6) return QStringLiteral("501 wrong address");
        passive.close();
        dataPort = static_cast<quint16>(parts[4].toInt() * 256 + parts[5].toInt());
        return QStringLiteral("200 port set");
    }
    if (verb == QStringLiteral("EPSV") || verb == QStringLiteral("PASV")) return Listen(verb);
    if (verb == QStringLiteral("EPRT")) {
        dataPort = argument.section(u'|', 3, 3).toUShort();
        return argument.startsWith(u"|2|::1|") ? QStringLiteral("200 port set")
                                               : QStringLiteral("522 wrong address");
    }
    if (verb == QStringLiteral("DELE"))
        return server.Files.remove(path) ? QStringLiteral("250 deleted")
                                         : QStringLiteral("550 no such file");
    if (verb == QStringLiteral("RNFR")) {
        renameFrom = there ? path : QString();
        return there ? QStringLiteral("350 to?") : QStringLiteral("550 no such file");
    }
    return QStringLiteral("500 unknown command");
}

QString ScriptedFtpSession::Listen(const QString& verb) {
    passive.close();
    passive.Tls = protectsData;
    passive.listen(control->localAddress());
    const int port = passive.serverPort();
    if (verb == QStringLiteral("EPSV")) return QStringLiteral("229 go (|||%1|)").arg(port);
    return QStringLiteral("227 go (%1,%2,%3)")
        .arg(server.PasvAddress)
        .arg(port / 256)
        .arg(port % 256);
}

QString ScriptedFtpSession::ChangeFolder(const QString& folder) {
    const QString path = PathOf(folder);
    if (!path.isEmpty() && !server.AnyFolder && !server.Folders.contains(path))
        return QStringLiteral("550 no such folder");
    cwd = path;
    return QStringLiteral("250 changed");
}

QString ScriptedFtpSession::RenameTo(const QString& path) {
    if (renameFrom.isEmpty()) return QStringLiteral("503 RNFR first");
    if (server.RefuseRenameOver && server.Files.contains(path)) return QStringLiteral("550 exists");
    const QByteArray content = server.Files.take(renameFrom);
    server.Files[path] = content;
    renameFrom.clear();
    return QStringLiteral("250 renamed");
}

// The path from the root, without a slash in front.
QString ScriptedFtpSession::PathOf(const QString& name) const {
    const QString full = name.startsWith(u'/') ? name : cwd + u'/' + name;
    // Not the system's own way: '\\' is part of a name here.
    QStringList steps;
    for (const QString& step : full.split(u'/', Qt::SkipEmptyParts)) {
        if (step != "..") {
            if (step != ".") steps << step;
        } else if (!steps.isEmpty()) {
            steps.removeLast();
        }
    }
    return steps.join(u'/');
}

void ScriptedFtpSession::Later(int milliseconds, const std::function<void()>& act) {
    auto* timer = new Timer(server.OwnClock(), milliseconds, this);
    connect(timer, &Timer::Tick, this, [timer, act] {
        timer->SetEnabled(false);
        timer->deleteLater();
        act();
    });
    timer->SetEnabled(true);
}

void ScriptedFtpSession::ReplyAs(const FtpFault& fault, const QString& usual) {
    if (fault.DelayMilliseconds > 0) {
        FtpFault prompt = fault;
        prompt.DelayMilliseconds = 0;
        return Later(fault.DelayMilliseconds, [this, prompt, usual] { ReplyAs(prompt, usual); });
    }
    if (fault.AwaySeconds > 0) server.GoAway(fault.AwaySeconds);
    QStringList parts = fault.Chunks;
    if (parts.isEmpty()) parts << usual + QStringLiteral("\r\n");
    if (fault.Silent) parts.clear();
    for (const QString& part : std::as_const(parts)) output << Output{part.toLatin1()};
    if (fault.CloseControl) output << Output{{}, true};
    Pump();
}

// Sends what waits. Between two parts the clock moves on, so that the client has read the first.
void ScriptedFtpSession::Pump() {
    if (pumping || output.isEmpty()) return;
    const Output next = output.takeFirst();
    if (next.Close) return CloseControl();
    control->write(next.Bytes);
    control->flush();
    pumping = true;
    Later(1, [this, turn = ++pumped] {
        if (turn != pumped) return;
        pumping = false;
        Pump();
    });
}

void ScriptedFtpSession::StartUpload(const QString& path) {
    const FtpFault fault = server.Meet(QStringLiteral("STOR"));
    const bool announced = fault.Chunks.isEmpty() || fault.Chunks.first().startsWith(u'1');
    const bool stays = fault.NoDataConnection && fault.DataFrom.isEmpty();
    if (!announced || stays || fault.CloseControl || fault.AwaySeconds > 0)
        return ReplyAs(fault, QStringLiteral("150 opening"));

    if (server.RepliesBeforeConnecting) {
        ReplyAs(fault, QStringLiteral("150 opening"));
        // Connects when the client has seen the reply.
        Later(2, [this, fault, path] { OpenData(fault, path, true); });
    } else {
        OpenData(fault, path, false);
    }
}

void ScriptedFtpSession::OpenData(const FtpFault& fault, const QString& path, bool announced) {
    if (passive.isListening() && !passive.hasPendingConnections()) {
        connect(
            &passive, &QTcpServer::newConnection, this,
            [this, fault, path, announced] { OpenData(fault, path, announced); },
            Qt::SingleShotConnection);
        return;
    }
    if (passive.isListening()) {
        data = passive.nextPendingConnection();
        data->setParent(this);
        return DataOpened(fault, path, announced);
    }
    data = protectsData ? new QSslSocket(this) : new QTcpSocket(this);
    if (!fault.DataFrom.isEmpty()) data->bind(QHostAddress(fault.DataFrom));
    connect(data, &QTcpSocket::connected, this,
            [this, fault, path, announced] { DataOpened(fault, path, announced); });
    connect(data, &QTcpSocket::errorOccurred, this, [this](QTcpSocket::SocketError error) {
        if (error != QTcpSocket::ConnectionRefusedError) return;
        EndData(QStringLiteral("425 cannot connect"));
    });
    data->connectToHost(control->peerAddress(), dataPort);
}

void ScriptedFtpSession::DataOpened(const FtpFault& fault, const QString& path, bool announced) {
    ++server.DataConnections;
    if (protectsData && !server.DataCertificate.isEmpty())
        ScriptedListener::Encrypt(data, server.DataCertificate);
    if (!announced) ReplyAs(fault, QStringLiteral("150 opening"));
    ReceiveData(fault, path);
}

void ScriptedFtpSession::ReceiveData(const FtpFault& fault, const QString& path) {
    server.Files[path].clear();
    const auto receive = [this, fault, path] {
        QByteArray& file = server.Files[path];
        file += data->readAll();
        file.squeeze();  // it would keep the 32 kB that were read into
        if (fault.DataBytes < 0 || file.size() < fault.DataBytes) return;
        file.truncate(fault.DataBytes);
        data->disconnect(this);
        data->abort();
        EndData(QStringLiteral("426 aborted"));
    };
    connect(data, &QTcpSocket::readyRead, this, receive);
    connect(data, &QTcpSocket::disconnected, this, [this, fault, path] {
        if (fault.DataFrom.isEmpty() || !server.Files[path].isEmpty())
            return EndData(QStringLiteral("226 complete"));
        FtpFault own = fault;
        own.DataFrom.clear();
        data->deleteLater();
        if (!fault.NoDataConnection) OpenData(own, path, true);
    });
    if (fault.DataBytes == 0) receive();
}

void ScriptedFtpSession::EndData(const QString& reply) {
    data->disconnect(this);
    data->deleteLater();
    data = nullptr;
    ReplyAs(server.Meet(QStringLiteral("DONE")), reply);
}
