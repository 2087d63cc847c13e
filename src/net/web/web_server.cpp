#include "net/web/web_server.h"

#include "base/waiting.h"

#include <QFile>

namespace {

// For people who watch: no header, so no password.
QString Said(const HttpQuestion& question) {
    const QString line = QString::fromLatin1(question.Verb + ' ' + question.Target);
    if (question.Verb != "PUT") return line;
    return line + QStringLiteral(" (%1 bytes)").arg(question.Body.size());
}

// Of the files that are published; a browser saves what it does not know.
QByteArray TypeOf(const QString& name) {
    const QString ending = name.section(u'.', -1).toLower();
    if (ending == u"jpg" || ending == u"jpeg") return "image/jpeg";
    if (ending == u"html" || ending == u"htm") return "text/html; charset=utf-8";
    return ending == u"mp4" ? "video/mp4" : "application/octet-stream";
}

}  // namespace

WebServer::WebServer(const Surroundings& surroundings)
    : PictureServer(surroundings), line(surroundings.Wait.OwnClock()) {
    connect(&line, &HttpLine::Progress, this, &PictureServer::SendProgress);
}

void WebServer::Close() {
    line.Close();
    open = false;
}

void WebServer::BeginOpen() {
    Close();
    if (used != Access()) deletes = true;
    used = Access();
}

ServerAnswer WebServer::Opened(const ServerAnswer& answer) {
    open = answer.Fine();
    if (!open) line.Close();
    return answer;
}

// After a fault whatever the server may still say belongs to nothing any more.
ServerAnswer WebServer::AwaitLine(int seconds) {
    const auto ended = Await([this] { return line.Settled(); }, seconds);
    ServerAnswer answer = ended ? ServerAnswer{*ended, {}} : line.Result();
    if (Cancelled()) answer = {ServerFault::Cancelled, {}};
    if (!answer.Fine()) line.Close();
    return answer;
}

ServerAnswer WebServer::Connect(const WebPlace& place) {
    if (line.IsOpenTo(place)) return {};
    line.Open(place, used.Trusted);
    return AwaitLine(ConnectSeconds);
}

WebServer::Talk WebServer::Ask(const WebPlace& place, const HttpQuestion& question, int seconds) {
    Talk talk;
    for (bool again = true; again;) {
        again = line.IsOpenTo(place);
        talk = {.Is = Connect(place)};
        if (!talk.Is.Fine()) break;
        emit Sent(Said(question));
        line.Ask(question);
        talk = {.Is = AwaitLine(seconds), .Answer = line.Answer()};
        // A kept connection that the server was just about to end.
        again = again && !talk.Is.Fine() && line.Unheard();
    }
    if (talk.Is.Fine())
        emit Received(talk.Answer.Line());
    else
        open = false;
    return talk;
}

HttpHeaders WebServer::PictureHeaders(const QString& name, bool cached) const {
    HttpHeaders headers{{"Content-Type", TypeOf(name)}};
    if (cached && used.CacheSeconds > 0)
        headers.append({"Cache-Control", "max-age=" + QByteArray::number(used.CacheSeconds)});
    return headers;
}

HttpHeaders WebServer::LookHeaders() {
    return {{"Range", "bytes=0-" + QByteArray::number(LookedAtBytes - 1)}};
}

std::optional<QByteArray> WebServer::ReadLocal(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = file.readAll();
    return file.error() == QFile::NoError ? std::optional(bytes) : std::nullopt;
}

ServerAnswer WebServer::CopyAndDelete(const QString& from, const QString& to) {
    const ServerAnswer copied = DoKeep(from, to);
    if (!copied.Fine() || !deletes) return copied;
    const ServerAnswer gone = DoDelete(from);
    if (!RefusesToDelete(gone.Is)) return gone;
    deletes = false;
    emit Remarked(ServerRemark::DeletesNothing);
    return {};
}
