#include "net/ftp/ftp_control_connection.h"

#include "net/ftp/ftp_text.h"

namespace {
constexpr int serviceReady = 220;
constexpr int lateEndMilliseconds = 5000;
constexpr qsizetype longestReply = 65536;  // characters; the rest is not kept
}  // namespace

FtpControlConnection::FtpControlConnection(Clock& clock, QObject* parent)
    : QObject(parent), element(clock), lateEnd(clock, lateEndMilliseconds) {
    connect(&lateEnd, &Timer::Tick, this, &FtpControlConnection::CountOpenReply);
    connect(&element, &Winsock::Connected, this, [this] { Connected = true; });
    connect(&element, &Winsock::Closed, this, [this] { Connected = LoggedIn = false; });
    connect(&element, &Winsock::DataArrival, this, &FtpControlConnection::Receive);
}

void FtpControlConnection::Open(const FtpProperties& wanted) {
    Close();
    WelcomeReceived = EpsvRefused = false;
    ReplyText.clear();
    Lines.Reset();
    received.clear();
    Encrypts = wanted.Security != FtpSecurity::None;
    const TlsTerms terms{.Trusted = wanted.Trusted};
    const bool atOnce = wanted.Security == FtpSecurity::Implicit;
    element.SetTls(Encrypts ? std::optional(terms) : std::nullopt,
                   atOnce ? Winsock::TlsStart::AtOnce : Winsock::TlsStart::Later);
    element.SetSockets(wanted.Sockets);
    element.Connect(wanted.RemoteHost, wanted.RemotePort);
}

void FtpControlConnection::StartTls() {
    Connected = false;
    Lines.Reset();
    element.StartTls();
}

void FtpControlConnection::Close() {
    element.Close();
    lateEnd.SetEnabled(false);
    Connected = LoggedIn = false;
}

void FtpControlConnection::SendLine(const QString& line) {
    element.Send((line + QStringLiteral("\r\n")).toUtf8());
    element.Flush();
}

bool FtpControlConnection::Gone() const {
    return element.State() == Winsock::StateClosed || element.State() > Winsock::StateConnected;
}

void FtpControlConnection::CountOpenReply() {
    const qsizetype known = Lines.Codes.size();
    Lines.CountOpen();
    Announce(known);
}

void FtpControlConnection::Receive() {
    received += element.GetData();
    const qsizetype cut = CutCharacter(received);
    const QString chunk = FromServer(received.chopped(cut));
    received = received.last(cut);
    if (chunk.isEmpty()) return;
    ReplyText = (Lines.Unfinished() ? ReplyText + chunk : chunk).left(longestReply);
    const qsizetype known = Lines.Codes.size();
    Lines.Feed(chunk);
    // The first line of a greeting is enough.
    if (ReplyCodeOf(ReplyText) == serviceReady || Lines.Codes.contains(serviceReady))
        WelcomeReceived = true;
    emit ServerResponse(chunk);
    Announce(known);
}

// Tells of the replies that were not known before.
void FtpControlConnection::Announce(qsizetype known) {
    lateEnd.SetEnabled(Lines.EndsTwice());
    const QList<int> codes = Lines.Codes.mid(known);
    for (const int code : codes) emit Replied(code);
}
