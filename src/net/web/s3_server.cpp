#include "net/web/s3_server.h"

#include "base/clock.h"
#include "base/waiting.h"
#include "net/web/s3_fault.h"

ServerAnswer S3Server::DoOpen() {
    const ServerAccess before = Used();
    BeginOpen();
    seen = seen && before == Used();
    place = S3Place::Of(Used());
    if (place.Bucket.Host.isEmpty()) return Opened({ServerFault::HostNotFound, Used().Server});
    if (Used().Bucket.trimmed().isEmpty()) return Opened({ServerFault::BucketMissing, {}});
    const ServerAnswer answer = seen ? Connect(place.Bucket) : List();
    seen = answer.Fine();
    return Opened(answer);
}

ServerAnswer S3Server::List() {
    const ServerAnswer answer =
        Exchange(HttpStep::Open,
                 {.Verb = "GET",
                  .Path = place.Bucket.Path,
                  .Query = {{"list-type", "2"},
                            {"max-keys", "1"},
                            {"prefix", place.KeyOf({}).replace('/', "%2F")}}},
                 {}, ConnectSeconds);
    return answer.Is == ServerFault::Forbidden ? ServerAnswer() : answer;
}

ServerAnswer S3Server::Exchange(HttpStep step, S3Question question, const QByteArray& body,
                                int seconds) {
    const QByteArray moment = S3Signature::Moment(Wait().OwnClock().Now());
    question.BodyHash = S3Signature::HashOf(body);
    question.Headers.append({"x-amz-content-sha256", question.BodyHash});
    question.Headers.append({"x-amz-date", moment});
    HttpHeaders headers = question.Headers;
    question.Headers.append({"Host", place.Bucket.HostHeader()});
    const S3Keys keys{
        .Access = Used().User.toUtf8(), .Secret = Used().Password.toUtf8(), .Region = place.Region};
    headers.append({"Authorization", S3Signature::Authorization(question, keys, moment)});
    const QByteArray query = S3Signature::QueryText(question.Query);
    const Talk talk = Ask(place.Bucket,
                          {.Verb = question.Verb,
                           .Target = query.isEmpty() ? question.Path : question.Path + '?' + query,
                           .Headers = headers,
                           .Body = body},
                          seconds);
    if (!talk.Is.Fine()) return talk.Is;
    const ServerAnswer answer = JudgeS3(talk.Answer, step);
    seen = seen && answer.Fine();
    return answer;
}

ServerAnswer S3Server::DoSend(const QString& localPath, const QString& name) {
    const std::optional<QByteArray> bytes = ReadLocal(localPath);
    if (!bytes) return {ServerFault::NoLocalFile, {}};
    return Exchange(
        HttpStep::Send,
        {.Verb = "PUT", .Path = place.PathOf(name), .Headers = PictureHeaders(name, true)}, *bytes,
        SendSeconds);
}

ServerAnswer S3Server::DoKeep(const QString& from, const QString& to) {
    const QByteArray source =
        '/' + PercentEncoded(Used().Bucket.trimmed()) + '/' + place.KeyOf(from);
    return Exchange(
        HttpStep::Copy,
        {.Verb = "PUT", .Path = place.PathOf(to), .Headers = {{"x-amz-copy-source", source}}}, {},
        RenameSeconds);
}

ServerAnswer S3Server::DoRename(const QString& from, const QString& to) {
    return CopyAndDelete(from, to);
}

ServerAnswer S3Server::DoDelete(const QString& name) {
    return Exchange(HttpStep::Delete, {.Verb = "DELETE", .Path = place.PathOf(name)}, {},
                    DeleteSeconds);
}

ServerAnswer S3Server::DoLook(const QString& name, QByteArray& beginning) {
    const ServerAnswer answer = Exchange(
        HttpStep::Look, {.Verb = "GET", .Path = place.PathOf(name), .Headers = LookHeaders()}, {},
        LookSeconds);
    if (answer.Fine()) beginning = LastAnswer().Body;
    return answer;
}
