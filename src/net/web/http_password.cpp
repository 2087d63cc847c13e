#include "net/web/http_password.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>
#include <utility>

namespace {

constexpr int hexadecimal = 16;
const QByteArray sha256 = "SHA-256";
const QByteArray md5 = "MD5";
const QByteArray sessionMark = "-SESS";

QByteArray Quoted(QByteArray text) {
    text.replace('\r', QByteArray()).replace('\n', QByteArray());
    return '"' + text.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

// The words of a challenge one after another.
class Words {
  public:
    explicit Words(const QByteArray& ownText) : text(ownText) {}

    [[nodiscard]] bool AtEnd() {
        while (at < text.size() &&
               (text.at(at) == ' ' || text.at(at) == ',' || text.at(at) == '\t'))
            ++at;
        return at >= text.size();
    }
    [[nodiscard]] QByteArray Word() {
        const qsizetype begin = at;
        while (at < text.size() && !QByteArrayLiteral(" \t,=").contains(text.at(at))) ++at;
        if (at == begin) ++at;  // a stray sign
        return text.mid(begin, at - begin);
    }
    // Whether the last word is a name whose value follows.
    [[nodiscard]] bool Equals() {
        qsizetype sign = at;
        while (sign < text.size() && text.at(sign) == ' ') ++sign;
        if (sign >= text.size() || text.at(sign) != '=') return false;
        at = sign + 1;
        while (at < text.size() && text.at(at) == ' ') ++at;
        return true;
    }
    [[nodiscard]] QByteArray Value() {
        if (at >= text.size() || text.at(at) != '"') return Word();
        QByteArray value;
        for (++at; at < text.size() && text.at(at) != '"'; ++at) {
            if (text.at(at) == '\\' && at + 1 < text.size()) ++at;
            value += text.at(at);
        }
        ++at;
        return value;
    }

  private:
    QByteArray text;
    qsizetype at = 0;
};

}  // namespace

void HttpPassword::Set(const QString& ownUser, const QString& ownPassword, bool basicAtOnce) {
    user = ownUser.toUtf8();
    password = ownPassword.toUtf8();
    known = {};
    sent = admitted = false;
    if (basicAtOnce && !user.isEmpty()) known.Is = Scheme::Basic;
}

QByteArray HttpPassword::For(const QByteArray& verb, const QByteArray& target) {
    if (known.Is == Scheme::None) return {};
    sent = true;
    if (known.Is == Scheme::Digest) return Digest(verb, target);
    return "Basic " + (user + ':' + password).toBase64();
}

// What is safest; of what cannot be answered nothing.
int HttpPassword::Challenge::Worth() const {
    if (Is != Scheme::Digest) return Is == Scheme::Basic ? 1 : 0;
    if (OtherQop && !Auth) return 0;
    const QByteArray algorithm = Algorithm.toUpper();
    if (algorithm == sha256 || algorithm == sha256 + sessionMark) return 3;
    return algorithm.isEmpty() || algorithm == md5 || algorithm == md5 + sessionMark ? 2 : 0;
}

bool HttpPassword::Learn(const QList<QByteArray>& challenges) {
    if (user.isEmpty()) return false;
    Challenge best;
    for (const QByteArray& text : challenges) {
        const QList<Challenge> read = Read(text);
        for (const Challenge& challenge : read)
            if (challenge.Worth() > best.Worth()) best = challenge;
    }
    if (best.Worth() == 0) return false;
    // The same words would be refused again, unless they were right and the server's number is
    // used up.
    const bool anew = best.Is == Scheme::Digest && best.Nonce != known.Nonce &&
                      (best.Stale || std::exchange(admitted, false));
    const bool worthIt = !sent || best.Is != known.Is || anew;
    known = best;
    sent = false;
    uses = 0;
    return worthIt;
}

QList<HttpPassword::Challenge> HttpPassword::Read(const QByteArray& text) {
    QList<Challenge> found;
    Words words(text);
    while (!words.AtEnd()) {
        const QByteArray word = words.Word().toLower();
        if (words.Equals()) {
            const QByteArray value = words.Value();
            if (!found.isEmpty()) Note(found.last(), word, value);
        } else {
            const Scheme scheme = word == "basic" ? Scheme::Basic : Scheme::None;
            found.append({.Is = word == "digest" ? Scheme::Digest : scheme});
        }
    }
    return found;
}

void HttpPassword::Note(Challenge& challenge, const QByteArray& name, const QByteArray& value) {
    if (name == "realm") challenge.Realm = value;
    if (name == "nonce") challenge.Nonce = value;
    if (name == "opaque") challenge.Opaque = value;
    if (name == "algorithm") challenge.Algorithm = value;
    if (name == "stale") challenge.Stale = value.toLower() == "true";
    if (name != "qop") return;
    const QList<QByteArray> kinds = value.split(',');
    challenge.Auth = std::any_of(kinds.begin(), kinds.end(), [](const QByteArray& kind) {
        return kind.trimmed().toLower() == "auth";
    });
    challenge.OtherQop = !challenge.Auth;
}

QByteArray HttpPassword::Digest(const QByteArray& verb, const QByteArray& target) {
    const QByteArray algorithm = known.Algorithm.toUpper();
    const auto hash = [&algorithm](const QByteArray& text) {
        const auto kind =
            algorithm.startsWith(sha256) ? QCryptographicHash::Sha256 : QCryptographicHash::Md5;
        return QCryptographicHash::hash(text, kind).toHex();
    };
    const QByteArray own =
        OwnNonce.isEmpty()
            ? QByteArray::number(QRandomGenerator::system()->generate64(), hexadecimal)
            : OwnNonce;
    const QByteArray count = QByteArray::number(++uses, hexadecimal).rightJustified(8, '0');
    QByteArray secret = hash(user + ':' + known.Realm + ':' + password);
    const bool session = algorithm.endsWith(sessionMark);
    if (session) secret = hash(secret + ':' + known.Nonce + ':' + own);
    const QByteArray turn = known.Auth ? count + ':' + own + ":auth:" : QByteArray();
    const QByteArray response =
        hash(secret + ':' + known.Nonce + ':' + turn + hash(verb + ':' + target));
    QByteArray value = "Digest username=" + Quoted(user) + ", realm=" + Quoted(known.Realm) +
                       ", nonce=" + Quoted(known.Nonce) + ", uri=" + Quoted(target) +
                       ", response=" + Quoted(response);
    if (!known.Algorithm.isEmpty()) value += ", algorithm=" + known.Algorithm;
    if (!known.Opaque.isEmpty()) value += ", opaque=" + Quoted(known.Opaque);
    if (known.Auth) value += ", qop=auth, nc=" + count;
    if (known.Auth || session) value += ", cnonce=" + Quoted(own);
    return value;
}
