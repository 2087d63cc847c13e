#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

using HttpHeaders = QList<std::pair<QByteArray, QByteArray>>;

// What a web server has answered.
struct HttpAnswer {
    int Status = 0;
    QByteArray Reason = {};
    HttpHeaders Headers = {};
    QByteArray Body = {};  // the first 64 KB of it

    [[nodiscard]] bool Good() const { return Status >= 200 && Status < 300; }
    // All that bear this name, whatever its case.
    [[nodiscard]] QList<QByteArray> All(const QByteArray& name) const;
    [[nodiscard]] QByteArray Header(const QByteArray& name) const { return All(name).value(0); }
    // "201 Created"
    [[nodiscard]] QString Line() const;
};

// Makes an answer out of the bytes of a connection, however they are cut (RFC 9112). It keeps
// bounded memory whatever comes. Answers to HEAD, which tell a length without a body, are not for
// it.
class HttpAnswerReader {
  public:
    enum class State {
        Reading,
        Whole,
        Cut,       // the connection ended within it
        Nonsense,  // not HTTP, or beyond what any server needs to say
    };
    void Feed(const QByteArray& bytes);
    // The connection has ended.
    void End();

    [[nodiscard]] State Is() const;
    [[nodiscard]] bool Begun() const { return begun; }
    // The connection can carry another question.
    [[nodiscard]] bool KeepsLine() const { return keeps && part == Part::Whole && rest.isEmpty(); }
    [[nodiscard]] const HttpAnswer& Answer() const { return answer; }

  private:
    enum class Part {
        Status,
        Headers,
        Body,       // of a length that was told
        BodyToEnd,  // of the connection
        ChunkLength,
        Chunk,
        ChunkEnd,
        Trailers,
        Whole,
        Cut,
        Nonsense,
    };
    [[nodiscard]] bool ReadsLines() const;
    [[nodiscard]] bool MayBeHttp() const;
    [[nodiscard]] std::optional<QByteArray> TakeLine();
    void TakeLines();
    void Take(const QByteArray& line);
    void TakeStatus(const QByteArray& line);
    void TakeHeader(const QByteArray& line);
    void TakeChunkLength(const QByteArray& line);
    void TakeBody();
    void BeginBody();

    Part part = Part::Status;
    HttpAnswer answer;
    QByteArray rest;         // not looked at yet
    qsizetype searched = 0;  // of the rest, for the end of a line
    qsizetype lineBytes = 0;
    quint64 missing = 0;  // of the body or chunk
    bool begun = false;
    bool keeps = true;
};
