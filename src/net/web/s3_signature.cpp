#include "net/web/s3_signature.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QMessageAuthenticationCode>

#include <algorithm>
#include <utility>

namespace {

const QByteArray algorithm = "AWS4-HMAC-SHA256";
constexpr qsizetype dayLength = 8;  // of "20130524T000000Z"

QByteArray Keyed(const QByteArray& text, const QByteArray& key) {
    return QMessageAuthenticationCode::hash(text, key, QCryptographicHash::Sha256);
}

// Names in lower case and in order, values without needless blanks.
HttpHeaders Ordered(const HttpHeaders& headers) {
    HttpHeaders ordered;
    for (const auto& [name, value] : headers) ordered.append({name.toLower(), value.simplified()});
    std::sort(ordered.begin(), ordered.end());
    return ordered;
}

QByteArray NamesOf(const HttpHeaders& ordered) {
    QByteArrayList names;
    for (const auto& [name, value] : ordered) names << name;
    return names.join(';');
}

QByteArray CanonicalQuestion(const S3Question& question, const HttpHeaders& ordered) {
    QByteArray text =
        question.Verb + '\n' + question.Path + '\n' + S3Signature::QueryText(question.Query) + '\n';
    for (const auto& [name, value] : ordered) text += name + ':' + value + '\n';
    return text + '\n' + NamesOf(ordered) + '\n' + question.BodyHash;
}

}  // namespace

QByteArray S3Signature::HashOf(const QByteArray& body) {
    return QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex();
}

QByteArray S3Signature::Moment(const QDateTime& when) {
    return when.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toLatin1();
}

QByteArray S3Signature::QueryText(HttpHeaders query) {
    std::sort(query.begin(), query.end());
    QByteArrayList parts;
    for (const auto& [name, value] : std::as_const(query)) parts << name + '=' + value;
    return parts.join('&');
}

QByteArray S3Signature::Authorization(const S3Question& question, const S3Keys& keys,
                                      const QByteArray& moment) {
    const QByteArray day = moment.left(dayLength);
    const QByteArray scope = day + '/' + keys.Region + "/s3/aws4_request";
    const HttpHeaders ordered = Ordered(question.Headers);
    const QByteArray text = algorithm + '\n' + moment + '\n' + scope + '\n' +
                            HashOf(CanonicalQuestion(question, ordered));
    QByteArray key = "AWS4" + keys.Secret;
    for (const QByteArray& part : {day, keys.Region, QByteArray("s3"), QByteArray("aws4_request")})
        key = Keyed(part, key);
    return algorithm + " Credential=" + keys.Access + '/' + scope +
           ",SignedHeaders=" + NamesOf(ordered) + ",Signature=" + Keyed(text, key).toHex();
}
