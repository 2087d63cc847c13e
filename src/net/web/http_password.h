#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// A name and password as web servers ask for them: basic (RFC 7617) and digest (RFC 7616, MD5 and
// SHA-256, also in its old form without "qop").
class HttpPassword {
  public:
    // basicAtOnce: sent before the server asks, which saves a turn and is right on encrypted lines
    // only.
    void Set(const QString& user, const QString& password, bool basicAtOnce);

    // The value of "Authorization" for the next question; empty: none.
    [[nodiscard]] QByteArray For(const QByteArray& verb, const QByteArray& target);
    // challenges: the values of "WWW-Authenticate" of a refusal. Returns whether asking again
    // would say anything new.
    [[nodiscard]] bool Learn(const QList<QByteArray>& challenges);
    // The last question was not refused.
    void Admitted() { admitted = true; }

    // A number of the client's own that goes into each digest; tests set it.
    QByteArray OwnNonce;

  private:
    enum class Scheme { None, Basic, Digest };
    struct Challenge {
        Scheme Is = Scheme::None;
        QByteArray Realm = {};
        QByteArray Nonce = {};
        QByteArray Opaque = {};
        QByteArray Algorithm = {};
        bool Auth = false;      // "qop" has it
        bool OtherQop = false;  // "qop" is there without it
        bool Stale = false;
        [[nodiscard]] int Worth() const;
    };
    [[nodiscard]] static QList<Challenge> Read(const QByteArray& text);
    static void Note(Challenge& challenge, const QByteArray& name, const QByteArray& value);
    [[nodiscard]] QByteArray Digest(const QByteArray& verb, const QByteArray& target);

    QByteArray user;
    QByteArray password;
    Challenge known;
    bool sent = false;  // with what is known
    bool admitted = false;
    int uses = 0;  // of the nonce
};
