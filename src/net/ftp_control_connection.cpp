#include "net/ftp_control_connection.h"

#include "net/ftp_text.h"

namespace {
constexpr int serviceReady = 220;
}

FtpControlConnection::FtpControlConnection(QObject* parent) : QObject(parent) {
    connect(&element, &Winsock::Connected, this, [this] { Connected = true; });
    connect(&element, &Winsock::Closed, this, [this] { Connected = LoggedIn = false; });
    connect(&element, &Winsock::DataArrival, this, &FtpControlConnection::Receive);
}

void FtpControlConnection::Open(const QString& host, qint32 port) {
    Close();
    WelcomeReceived = false;
    ReplyText.clear();
    Lines.Reset();
    ForgetReply();
    element.Connect(host, port);
}

void FtpControlConnection::Close() {
    element.Close();
    Connected = LoggedIn = false;
}

void FtpControlConnection::SendLine(const QString& line) {
    element.Send((line + QStringLiteral("\r\n")).toUtf8());
}

bool FtpControlConnection::Gone() const {
    return element.State() == Winsock::StateClosed || element.State() > Winsock::StateConnected;
}

void FtpControlConnection::ForgetReply() {
    ReplyCode = 0;
    Lines.Codes.clear();
}

void FtpControlConnection::Receive() {
    const QString chunk = FromServer(element.GetData());
    if (chunk.isEmpty()) return;
    ReplyCode = ReplyCodeOf(chunk);
    ReplyText = chunk;
    const qsizetype known = Lines.Codes.size();
    Lines.Feed(chunk);
    const QList<int> codes = Lines.Codes.mid(known);
    if (ReplyCode == serviceReady || Lines.Codes.contains(serviceReady)) WelcomeReceived = true;
    emit ServerResponse(chunk);
    for (const int code : codes) emit Replied(code);
}
