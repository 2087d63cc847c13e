#pragma once

#include "net/address_race.h"
#include "net/server_answer.h"
#include "net/web/http_answer.h"
#include "net/web/web_place.h"

#include <QObject>

class TlsSocket;

struct HttpQuestion {
    QByteArray Verb;
    QByteArray Target;         // from the root of the server, percent-encoded
    HttpHeaders Headers = {};  // besides Host, User-Agent and Content-Length
    QByteArray Body = {};
};

// A connection to a web server that carries one question after another. Nothing here waits: each
// step has been taken when Settled.
//
// Not QNetworkAccessManager: that of Qt 6.4 keeps a header of any length (230 MB in five seconds
// from a server that never ends one), sends a picture up to four times to a server that hangs up,
// and does not tell whether its connection stands.
class HttpLine : public QObject {
    Q_OBJECT

  public:
    explicit HttpLine(Clock& clock);
    ~HttpLine() override;

    // Begins to connect. trusted: see Certificates::Judge.
    void Open(const WebPlace& place, const QString& trusted);
    // Sends a question on a line that is open; on one that has ended it is lost.
    void Ask(const HttpQuestion& question);
    // What was under way ends as a connection that is lost.
    void Close();

    // Neither connecting nor waiting for an answer.
    [[nodiscard]] bool Settled() const { return state == State::Closed || state == State::Open; }
    // Takes a question for this server; false as soon as that has hung up.
    [[nodiscard]] bool IsOpenTo(const WebPlace& wanted) const;
    // How the last step ended.
    [[nodiscard]] const ServerAnswer& Result() const { return result; }
    // Of the last question, where that was fine.
    [[nodiscard]] const HttpAnswer& Answer() const { return reader.Answer(); }
    // The server hung up on the last question without a word: on a connection that was kept, it
    // had most likely not seen it.
    [[nodiscard]] bool Unheard() const { return unheard; }

  signals:
    // bytes of a picture
    void Progress(qint64 sent, qint64 total);

  private:
    enum class State { Closed, Connecting, Open, Asking };
    void Use(TlsSocket* connected);
    void Ready();
    void Read();
    void Ended();
    void Failed();
    void Settle(const ServerAnswer& answer);
    void CountSent(qint64 bytes);
    [[nodiscard]] ServerAnswer FaultOfSocket() const;

    State state = State::Closed;
    AddressRace race;
    TlsSocket* socket = nullptr;
    WebPlace place;
    HttpAnswerReader reader;
    ServerAnswer result;
    bool unheard = false;
    bool asked = false;  // a question since the line was opened
    qint64 unsent = 0;   // of head and body
    qint64 pictureSize = 0;
};
