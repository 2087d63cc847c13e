#pragma once

#include "net/web/http_answer.h"

class QDateTime;

// A question to object storage, as it is signed.
struct S3Question {
    QByteArray Verb;
    QByteArray Path;           // percent-encoded
    HttpHeaders Query = {};    // percent-encoded names and values
    HttpHeaders Headers = {};  // all that are signed, "Host" among them
    QByteArray BodyHash = {};  // SHA-256, hexadecimal
};

struct S3Keys {
    QByteArray Access;
    QByteArray Secret;
    QByteArray Region;
};

// Signature version 4 of AWS, which all S3-compatible storage understands.
namespace S3Signature {

[[nodiscard]] QByteArray HashOf(const QByteArray& body);
// The value of "x-amz-date": "20130524T000000Z".
[[nodiscard]] QByteArray Moment(const QDateTime& when);
// As it stands behind the path, names in order.
[[nodiscard]] QByteArray QueryText(HttpHeaders query);
// The value of "Authorization". moment: that of the header "x-amz-date".
[[nodiscard]] QByteArray Authorization(const S3Question& question, const S3Keys& keys,
                                       const QByteArray& moment);

}  // namespace S3Signature
