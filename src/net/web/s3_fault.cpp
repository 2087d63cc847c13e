#include "net/web/s3_fault.h"

#include "net/web/http_answer.h"

#include <QMap>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

namespace {

using Told = QMap<QString, QString>;  // elements by name

struct Meaning {
    const char* Code;
    ServerFault Is;
    const char* Reply;  // the element that holds what the operator needs; none: code and message
};

// What providers say for the same thing differs here and there.
constexpr auto meanings = std::to_array<Meaning>({
    {"InvalidAccessKeyId", ServerFault::LoginRefused, nullptr},
    {"SignatureDoesNotMatch", ServerFault::SignatureRefused, nullptr},
    {"RequestTimeTooSkewed", ServerFault::ClockWrong, "ServerTime"},
    {"AccessDenied", ServerFault::Forbidden, nullptr},
    {"AllAccessDisabled", ServerFault::Forbidden, nullptr},
    {"AccountProblem", ServerFault::Forbidden, nullptr},
    {"NoSuchBucket", ServerFault::BucketMissing, nullptr},
    {"InvalidBucketName", ServerFault::BucketMissing, nullptr},
    {"NoSuchKey", ServerFault::FileMissing, nullptr},
    {"AuthorizationHeaderMalformed", ServerFault::WrongRegion, "Region"},
    {"PermanentRedirect", ServerFault::WrongRegion, "Endpoint"},
    {"TemporaryRedirect", ServerFault::WrongRegion, "Endpoint"},
    {"IllegalLocationConstraintException", ServerFault::WrongRegion, "Region"},
    {"InvalidRegion", ServerFault::WrongRegion, "Region"},
    {"EntityTooLarge", ServerFault::TooLarge, nullptr},
    {"MethodNotAllowed", ServerFault::PutNotAllowed, nullptr},
    {"QuotaExceeded", ServerFault::NoRoom, nullptr},
    {"QuotaExceededException", ServerFault::NoRoom, nullptr},
    {"XMinioStorageFull", ServerFault::NoRoom, nullptr},
    {"XMinioAdminBucketQuotaExceeded", ServerFault::NoRoom, nullptr},
});

// The texts of an error; empty for anything else.
Told Read(const QByteArray& body) {
    Told told;
    QXmlStreamReader xml(body);
    if (!xml.readNextStartElement() || xml.name() != QStringLiteral("Error")) return told;
    while (xml.readNextStartElement()) {
        const QString name = xml.name().toString();
        told[name] = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
    }
    return told;
}

QString Words(const HttpAnswer& answer, const Told& told) {
    const QString code = told.value(QStringLiteral("Code"));
    if (code.isEmpty()) return answer.Line();
    const QString message = told.value(QStringLiteral("Message"));
    return message.isEmpty() ? code : code + QStringLiteral(": ") + message;
}

// A bucket that lies elsewhere says so in any answer, also where there is no body.
QString RegionOf(const HttpAnswer& answer) {
    return QString::fromLatin1(answer.Header("x-amz-bucket-region"));
}

ServerAnswer Judge(const Meaning& meaning, const HttpAnswer& answer, const Told& told) {
    QString reply = meaning.Reply ? told.value(QString::fromLatin1(meaning.Reply)) : QString();
    if (const QString region = RegionOf(answer);
        meaning.Is == ServerFault::WrongRegion && !region.isEmpty())
        reply = region;
    return {meaning.Is, reply.isEmpty() ? Words(answer, told) : reply};
}

}  // namespace

ServerAnswer JudgeS3(const HttpAnswer& answer, HttpStep step) {
    constexpr int moved = 301;
    const Told told = Read(answer.Body);
    const QByteArray code = told.value(QStringLiteral("Code")).toLatin1();
    const auto known = std::find_if(meanings.begin(), meanings.end(),
                                    [&code](const Meaning& row) { return code == row.Code; });
    if (known != meanings.end()) return Judge(*known, answer, told);
    if (answer.Status == moved && !RegionOf(answer).isEmpty())
        return {ServerFault::WrongRegion, RegionOf(answer)};
    if (const QByteArray target = answer.Header("Location"); !answer.Good() && !target.isEmpty())
        return {ServerFault::RedirectedAway, QString::fromUtf8(target)};
    if (answer.Good())
        return told.isEmpty() ? ServerAnswer()
                              : ServerAnswer{ServerFault::ServerRefused, Words(answer, told)};
    ServerAnswer judged = JudgeStatus(answer, step);
    judged.Reply = Words(answer, told);
    return judged;
}
