#include "net/web/http_line.h"

#include "net/tls_socket.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 mostUnread = 65'536;

QByteArray HeadOf(const HttpQuestion& question, const WebPlace& place) {
    QByteArray head = question.Verb + ' ' + question.Target +
                      " HTTP/1.1\r\nHost: " + place.HostHeader() + "\r\nUser-Agent: Stillpost\r\n";
    for (const auto& [name, value] : question.Headers) head += name + ": " + value + "\r\n";
    if (!question.Body.isEmpty() || question.Verb == "PUT")
        head += "Content-Length: " + QByteArray::number(question.Body.size()) + "\r\n";
    return head + "\r\n";
}

ServerFault FaultOf(QAbstractSocket::SocketError error, bool connecting) {
    switch (error) {
        case QAbstractSocket::HostNotFoundError:
            return ServerFault::HostNotFound;
        case QAbstractSocket::ConnectionRefusedError:
            return ServerFault::Refused;
        case QAbstractSocket::SocketTimeoutError:
            return ServerFault::NoAnswer;
        case QAbstractSocket::SslInternalError:
        case QAbstractSocket::SslInvalidUserDataError:
            return ServerFault::EncryptionBroken;
        default:
            return connecting ? ServerFault::Unreachable : ServerFault::ConnectionLost;
    }
}

// A server that speaks without encryption at this port.
bool SpeaksPlainly(const QString& error) {
    return error.contains(QStringLiteral("wrong version number"), Qt::CaseInsensitive);
}

// A server that wants encryption at this port: it answers with a record of TLS, or says it in words
// of its own.
bool WantsEncryption(const HttpAnswer& answer) {
    constexpr int badRequest = 400;
    return answer.Status == badRequest && answer.Body.contains("HTTPS");
}

}  // namespace

HttpLine::HttpLine(Clock& clock) : race(clock) {
    connect(&race, &AddressRace::Won, this, &HttpLine::Use);
    connect(&race, &AddressRace::Lost, this, [this](auto error, const QString& text) {
        Settle({FaultOf(error, true), text});
    });
}

HttpLine::~HttpLine() {
    Close();
}

void HttpLine::Open(const WebPlace& wanted, const QString& trusted) {
    Close();
    place = wanted;
    result = {};
    unheard = asked = false;
    state = State::Connecting;
    race.Begin(place.Host, place.Port, {.Trusted = trusted, .PeerName = place.Host});
}

void HttpLine::Use(TlsSocket* connected) {
    socket = connected;
    socket->setParent(this);
    socket->setReadBufferSize(mostUnread);
    connect(socket, &TlsSocket::Established, this, &HttpLine::Ready);
    connect(socket, &TlsSocket::readyRead, this, &HttpLine::Read);
    connect(socket, &TlsSocket::disconnected, this, &HttpLine::Ended);
    connect(socket, &TlsSocket::errorOccurred, this, &HttpLine::Failed);
    connect(socket, &TlsSocket::bytesWritten, this, &HttpLine::CountSent);
    place.Secure ? socket->Begin() : Ready();
}

void HttpLine::Close() {
    if (!Settled()) result = {ServerFault::ConnectionLost, {}};
    state = State::Closed;
    race.GiveUp();
    if (!socket) return;
    TlsSocket* const old = std::exchange(socket, nullptr);
    old->disconnect(this);
    old->abort();
    old->deleteLater();
}

bool HttpLine::IsOpenTo(const WebPlace& wanted) const {
    return state == State::Open && place.SameServer(wanted);
}

void HttpLine::Ready() {
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    state = State::Open;
}

void HttpLine::Ask(const HttpQuestion& question) {
    reader = {};
    // It may have ended in the same breath in which it began.
    unheard = state != State::Open;
    result = {unheard ? ServerFault::ConnectionLost : ServerFault::None, {}};
    if (unheard) return;
    asked = true;
    state = State::Asking;
    const QByteArray head = HeadOf(question, place);
    const qsizetype body = question.Body.size();
    pictureSize = question.Verb == "PUT" ? body : 0;
    unsent = head.size() + body;
    socket->write(head);
    if (body > 0) socket->write(question.Body);
}

void HttpLine::CountSent(qint64 bytes) {
    unsent = std::max<qint64>(0, unsent - bytes);
    if (state == State::Asking && pictureSize > 0 && unsent <= pictureSize)
        emit Progress(pictureSize - unsent, pictureSize);
}

void HttpLine::Read() {
    // Servers say good-bye to a line that nobody uses, if they say anything; none speaks first.
    if (state == State::Open) {
        if (!asked) result = {ServerFault::NotThisWay, {}};
        return Close();
    }
    while (state == State::Asking && socket->bytesAvailable() > 0) {
        const QByteArray bytes = socket->read(mostUnread);
        const bool first = !reader.Begun();
        reader.Feed(bytes);
        if (reader.Is() == HttpAnswerReader::State::Nonsense) {
            constexpr char tlsAlert = 0x15;
            const bool alert = first && !place.Secure && bytes.at(0) == tlsAlert;
            return Settle({alert ? ServerFault::EncryptionNeeded : ServerFault::NotThisWay, {}});
        }
        if (reader.Is() != HttpAnswerReader::State::Whole) continue;
        if (!place.Secure && WantsEncryption(reader.Answer()))
            return Settle({ServerFault::EncryptionNeeded, reader.Answer().Line()});
        state = State::Open;
        // An answer before the end of the question: the rest would be taken for the next.
        if (!reader.KeepsLine() || unsent > 0) Close();
    }
}

void HttpLine::Ended() {
    if (state == State::Asking) {
        Read();
        if (state != State::Asking) return;
        reader.End();
        if (reader.Is() == HttpAnswerReader::State::Whole) return Close();
    }
    Failed();
}

void HttpLine::Failed() {
    if (state == State::Asking && socket->error() == QAbstractSocket::RemoteHostClosedError &&
        socket->state() != QAbstractSocket::UnconnectedState)
        return;  // Ended comes with what has arrived before
    if (Settled()) return Close();
    Settle(FaultOfSocket());
}

void HttpLine::Settle(const ServerAnswer& answer) {
    unheard = state == State::Asking && !reader.Begun();
    Close();
    result = answer;
}

ServerAnswer HttpLine::FaultOfSocket() const {
    const QString text = socket->errorString();
    const bool connecting = state == State::Connecting;
    if (connecting && socket->Begun()) {
        const ServerAnswer verdict = socket->Verdict();
        const bool plain = verdict.Is == ServerFault::EncryptionBroken && SpeaksPlainly(text);
        return plain ? ServerAnswer{ServerFault::NoEncryption, text} : verdict;
    }
    return {FaultOf(socket->error(), connecting), text};
}
