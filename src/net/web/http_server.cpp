#include "net/web/http_server.h"

#include "net/web/http_status.h"

#include <utility>

namespace {

constexpr int mostTurns = 8;  // redirections and passwords of one step
constexpr int unauthorized = 401;

bool Redirects(int status) {
    return status == 301 || status == 302 || status == 307 || status == 308;
}

// Servers and proxies that know no WebDAV, or not this kind of address.
bool Unknown(int status) {
    return status == 400 || status == 405 || status == 501 || status == 502;
}

// The least that can be asked of a folder.
const QByteArray kindOfFolder =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
    "<propfind xmlns=\"DAV:\"><prop><resourcetype/></prop></propfind>";

}  // namespace

void HttpServer::Forget() {
    moves = copies = wholeAddresses = true;
    sendsWhole = false;
    password.Set(Used().User, Used().Password, place.Secure);
}

ServerAnswer HttpServer::DoOpen() {
    BeginOpen();
    if (checked != Used()) {
        checked.reset();
        place = WebPlace::Of(Used()).Below(Used().Folder);
        Forget();
    }
    if (place.Host.isEmpty()) return Opened({ServerFault::HostNotFound, Used().Server});
    // The folder was seen already: the next picture tells whether it is still there.
    const ServerAnswer answer = checked ? Connect(place) : Check();
    if (answer.Fine()) checked = Used();
    return Opened(answer);
}

// What other answers than these mean shows when the picture is sent: many servers take pictures
// and know nothing else; some hang up on a word that they do not know.
ServerAnswer HttpServer::Check() {
    const Talk talk = Exchange({.Verb = "PROPFIND",
                                .Target = place.Path,
                                .Headers = {{"Depth", "0"}, {"Content-Type", "application/xml"}},
                                .Body = kindOfFolder},
                               ConnectSeconds);
    if (talk.Is.Is == ServerFault::ConnectionLost) return {};
    if (!talk.Is.Fine()) return talk.Is;
    const ServerAnswer answer = JudgeStatus(talk.Answer, HttpStep::Open);
    const bool tells =
        answer.Is == ServerFault::LoginRefused || answer.Is == ServerFault::FolderMissing;
    if (tells) return answer;
    return talk.Answer.Header("Server").startsWith("Apache") ? AskApache() : ServerAnswer();
}

// Apache deletes a file before it moves another one to its name, so that a visitor may find none;
// what is sent to a folder of its own disk it renames itself, over the file, once it is whole.
ServerAnswer HttpServer::AskApache() {
    const Talk talk = Exchange({.Verb = "OPTIONS", .Target = place.Path}, ConnectSeconds);
    sendsWhole = talk.Answer.All("DAV").join().contains("apache.org/dav/propset/fs/");
    return talk.Is.Is == ServerFault::Cancelled ? talk.Is : ServerAnswer();
}

QByteArray HttpServer::TargetOf(const QString& name) const {
    return place.Path + PercentEncoded(name);
}

HttpServer::Talk HttpServer::Exchange(HttpQuestion question, int seconds) {
    const HttpHeaders headers = question.Headers;
    const bool ofFolder = question.Target == place.Path;
    WebPlace asked = place;
    asked.Path = question.Target;
    Talk talk;
    for (int turn = 0; turn < mostTurns; ++turn) {
        question.Target = asked.Path;
        question.Headers = headers;
        const QByteArray login = password.For(question.Verb, question.Target);
        if (!login.isEmpty()) question.Headers.append({"Authorization", login});
        talk = Ask(asked, question, seconds);
        if (!talk.Is.Fine()) return talk;
        if (talk.Answer.Status == unauthorized) {
            if (password.Learn(talk.Answer.All("WWW-Authenticate"))) continue;
            checked.reset();
            return talk;
        }
        password.Admitted();
        if (!Redirects(talk.Answer.Status)) break;
        const std::optional<WebPlace> target = Redirection(asked, talk.Answer);
        if (!target) {
            const QByteArray address = talk.Answer.Header("Location");
            return {.Is = {ServerFault::RedirectedAway, QString::fromUtf8(address)}};
        }
        asked = *target;
        // All that follows goes there at once.
        if (ofFolder && asked.Path.endsWith('/') && !asked.Path.contains('?')) place = asked;
    }
    return talk;
}

std::optional<WebPlace> HttpServer::Redirection(const WebPlace& asked,
                                                const HttpAnswer& answer) const {
    const QByteArray address = answer.Header("Location");
    if (address.startsWith('/') && !address.startsWith("//")) {
        WebPlace target = asked;
        target.Path =
            address.left(address.indexOf('#') < 0 ? address.size() : address.indexOf('#'));
        return target;
    }
    const WebPlace target = WebPlace::OfAddress(address);
    const bool lessSafe = asked.Secure && !target.Secure;
    const bool same = target.Host.compare(asked.Host, Qt::CaseInsensitive) == 0;
    return same && !lessSafe ? std::optional(target) : std::nullopt;
}

ServerAnswer HttpServer::DoSend(const QString& localPath, const QString& name) {
    const std::optional<QByteArray> bytes = ReadLocal(localPath);
    if (!bytes) return {ServerFault::NoLocalFile, {}};
    sentName = name;
    sentFrom = localPath;
    const Talk talk = Exchange({.Verb = "PUT",
                                .Target = TargetOf(name),
                                .Headers = PictureHeaders(name, place.Secure),
                                .Body = *bytes},
                               SendSeconds);
    return talk.Is.Fine() ? JudgeStatus(talk.Answer, HttpStep::Send) : talk.Is;
}

std::optional<ServerAnswer> HttpServer::Transfer(HttpStep step, const QString& from,
                                                 const QString& to) {
    for (;;) {
        const QByteArray path = TargetOf(to);
        const Talk talk =
            Exchange({.Verb = step == HttpStep::Copy ? "COPY" : "MOVE",
                      .Target = TargetOf(from),
                      .Headers = {{"Destination", wholeAddresses ? place.Address(path) : path},
                                  {"Overwrite", "T"}}},
                     RenameSeconds);
        if (!talk.Is.Fine()) return talk.Is;
        const int status = talk.Answer.Status;
        if (!Unknown(status)) return JudgeStatus(talk.Answer, step);
        // Behind a proxy a server may not know itself by its public address.
        const bool another = wholeAddresses && (status == 400 || status == 502);
        if (!another) return {};
        wholeAddresses = false;
    }
}

ServerAnswer HttpServer::DoRename(const QString& from, const QString& to) {
    if (moves) {
        const std::optional<ServerAnswer> moved = Transfer(HttpStep::Rename, from, to);
        if (moved) return *moved;
        moves = false;
        emit Remarked(ServerRemark::NoRename);
        // What cannot be renamed is in nobody's way.
        if (const ServerAnswer gone = DoDelete(from); gone.Is == ServerFault::Cancelled)
            return gone;
    }
    return from == sentName ? DoSend(sentFrom, to) : CopyAndDelete(from, to);
}

ServerAnswer HttpServer::DoKeep(const QString& from, const QString& to) {
    if (copies) {
        const std::optional<ServerAnswer> copied = Transfer(HttpStep::Copy, from, to);
        if (copied) return *copied;
        copies = false;
    }
    const std::optional<ServerAnswer> moved =
        moves ? Transfer(HttpStep::Rename, from, to) : std::nullopt;
    return moved.value_or(ServerAnswer{ServerFault::NoCopies, QStringLiteral("COPY, MOVE")});
}

ServerAnswer HttpServer::DoDelete(const QString& name) {
    const Talk talk = Exchange({.Verb = "DELETE", .Target = TargetOf(name)}, DeleteSeconds);
    return talk.Is.Fine() ? JudgeStatus(talk.Answer, HttpStep::Delete) : talk.Is;
}

ServerAnswer HttpServer::DoLook(const QString& name, QByteArray& beginning) {
    const Talk talk =
        Exchange({.Verb = "GET", .Target = TargetOf(name), .Headers = LookHeaders()}, LookSeconds);
    if (!talk.Is.Fine()) return talk.Is;
    const ServerAnswer answer = JudgeStatus(talk.Answer, HttpStep::Look);
    if (answer.Fine()) beginning = talk.Answer.Body;
    return answer;
}
