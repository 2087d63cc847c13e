#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

// The packets of the SSH file transfer protocol, version 3 (draft-ietf-secsh-filexfer-02), as
// bytes: what a client asks, and what a server may answer to it. Knows neither connection nor
// order.
namespace Sftp {

constexpr quint32 ProtocolVersion = 3;

enum class Kind : quint8 {
    Init = 1,
    Version = 2,
    Open = 3,
    Close = 4,
    Read = 5,
    Write = 6,
    Setstat = 9,
    Remove = 13,
    Stat = 17,
    Rename = 18,
    Status = 101,
    Handle = 102,
    Data = 103,
    Attributes = 105,
    Extended = 200,
};

enum class Status : quint32 {
    Ok = 0,
    NoSuchFile = 2,
    PermissionDenied = 3,
    Failure = 4,  // all that the others do not say, such as a full disk
    Unsupported = 8,
    // Of later versions, but some servers say them in this one too.
    FileExists = 11,
    NoSpace = 14,
    QuotaExceeded = 15,
};

// One request, put together part by part.
class Request {
  public:
    // id: comes back with the answer; of Init the version.
    Request(Kind kind, quint32 id);

    Request& Number(quint32 value);
    Request& LongNumber(quint64 value);
    Request& Text(const QByteArray& bytes);

    [[nodiscard]] quint32 Id() const { return id; }
    // As it goes to the server.
    [[nodiscard]] QByteArray Bytes() const;

  private:
    quint32 id;
    QByteArray content;
};

struct Reply {
    Kind Is = Kind::Status;
    quint32 Id = 0;  // of the request; of Version the version
    Status Code = Status::Ok;
    QByteArray Text = {};  // the handle, data of a file, or a status in the server's words
    std::optional<quint32> Mode = {};  // type and permissions of a file, as stat(2) has them
    QByteArrayList Extensions = {};    // of Version: what else the server can do
};

// Cuts the bytes that come from a server into replies. Whatever they are, it takes no more room
// than the longest reply, and what follows the first nonsense is never looked at.
class Replies {
  public:
    void Add(const QByteArray& bytes);
    // The next whole reply; none: not there yet, or Broken.
    [[nodiscard]] std::optional<Reply> Next();

    // The server speaks something else.
    [[nodiscard]] bool Broken() const { return broken; }
    // What cannot be read as a reply, from its beginning.
    [[nodiscard]] const QByteArray& Rest() const { return buffer; }

  private:
    QByteArray buffer;
    bool broken = false;
};

}  // namespace Sftp
