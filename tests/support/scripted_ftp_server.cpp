#include "support/scripted_ftp_server.h"

#include "support/scripted_ftp_session.h"
#include "support/test_certificates.h"

#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>

ScriptedFtpServer::ScriptedFtpServer(Clock& ownClock, const QHostAddress& ownAddress)
    : clock(ownClock), address(ownAddress), back(ownClock, 1) {
    connect(&back, &Timer::Tick, this, [this] {
        back.SetEnabled(false);
        BackSince = clock.Milliseconds();
        ListenAgain();
    });
    connect(&listener, &QTcpServer::newConnection, this, &ScriptedFtpServer::Take);
    ListenAgain();
}

ScriptedFtpServer::~ScriptedFtpServer() {
    for (ScriptedFtpSession* session : std::as_const(sessions)) delete session;
}

void ScriptedListener::incomingConnection(qintptr descriptor) {
    QTcpSocket* const socket = Tls ? new QSslSocket(this) : new QTcpSocket(this);
    socket->setSocketDescriptor(descriptor);
    addPendingConnection(socket);
}

void ScriptedListener::Encrypt(QTcpSocket* socket, const QByteArray& certificate) {
    auto* const secure = qobject_cast<QSslSocket*>(socket);
    secure->setLocalCertificate(QSslCertificate(certificate));
    secure->setPrivateKey(QSslKey(TestCertificates::Key, QSsl::Ec));
    secure->startServerEncryption();
}

void ScriptedFtpServer::SetTls(const QByteArray& certificate, bool atOnce) {
    Certificate = DataCertificate = certificate;
    TlsAtOnce = atOnce;
    listener.Tls = true;
}

void ScriptedFtpServer::Take() {
    ++Connections;
    sessions.removeAll(nullptr);
    sessions << new ScriptedFtpSession(*this, listener.nextPendingConnection());
}

void ScriptedFtpServer::ListenAgain() {
    if (listener.isListening()) return;
    if (!listener.listen(address, port)) qFatal("the test server cannot listen");
    port = listener.serverPort();
}

void ScriptedFtpServer::StopListening() {
    listener.close();
}

void ScriptedFtpServer::GoAway(int seconds) {
    StopListening();
    DropControl();
    back.SetInterval(seconds * 1000);
    back.SetEnabled(true);
}

void ScriptedFtpServer::DropControl() {
    for (ScriptedFtpSession* session : std::as_const(sessions))
        if (session) session->CloseControl();
}

FtpFault ScriptedFtpServer::Meet(const QString& verb) {
    const int occurrence = ++met[verb];
    for (const FtpFault& fault : std::as_const(Script))
        if (fault.Verb == verb && (fault.Occurrence == 0 || fault.Occurrence == occurrence))
            return fault;
    return Whim ? Whim(verb) : FtpFault{.Verb = verb};
}
