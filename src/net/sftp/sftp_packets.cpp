#include "net/sftp/sftp_packets.h"

#include <QtEndian>

namespace Sftp {

namespace {

// Of the replies that are asked for here none comes near it.
constexpr quint32 longestReply = 64 * 1024;
constexpr qsizetype longestHandle = 256;
constexpr qsizetype lengthSize = 4;

// What a file's attributes begin with: which of them follow.
constexpr quint32 hasSize = 1;
constexpr quint32 hasOwner = 2;
constexpr quint32 hasMode = 4;

template <class Number>
QByteArray BigEndian(Number value) {
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

// Reads one field after the other. Past the end all are empty, and Fine() is false from then on.
class Fields {
  public:
    explicit Fields(const QByteArray& packet) : bytes(packet) {}

    quint8 Byte() {
        const QByteArray taken = Take(1);
        return taken.isEmpty() ? quint8{0} : static_cast<quint8>(taken.front());
    }
    quint32 Number() {
        const QByteArray taken = Take(sizeof(quint32));
        return taken.isEmpty() ? 0 : qFromBigEndian<quint32>(taken.constData());
    }
    QByteArray Text() { return Take(Number()); }
    void Skip(qsizetype count) { static_cast<void>(Take(count)); }

    [[nodiscard]] bool AtEnd() const { return at == bytes.size(); }
    [[nodiscard]] bool Fine() const { return fine; }

  private:
    QByteArray Take(qsizetype count) {
        fine = fine && count <= bytes.size() - at;
        if (!fine) return {};
        at += count;
        return bytes.mid(at - count, count);
    }

    const QByteArray& bytes;
    qsizetype at = 0;
    bool fine = true;
};

std::optional<quint32> ModeOf(Fields& fields) {
    const quint32 flags = fields.Number();
    if (flags & hasSize) fields.Skip(8);
    if (flags & hasOwner) fields.Skip(8);
    return flags & hasMode ? std::optional(fields.Number()) : std::nullopt;
}

// None: no reply that anybody here has asked for.
std::optional<Reply> Parse(const QByteArray& packet) {
    Fields fields(packet);
    Reply reply;
    reply.Is = static_cast<Kind>(fields.Byte());
    reply.Id = fields.Number();
    switch (reply.Is) {
        case Kind::Version:
            while (fields.Fine() && !fields.AtEnd()) {
                reply.Extensions << fields.Text();
                fields.Skip(fields.Number());  // its own version
            }
            break;
        case Kind::Status:
            reply.Code = static_cast<Status>(fields.Number());
            if (!fields.AtEnd()) reply.Text = fields.Text();  // old servers say no words
            break;
        case Kind::Handle:
            reply.Text = fields.Text();
            if (reply.Text.size() > longestHandle) return std::nullopt;
            break;
        case Kind::Data:
            reply.Text = fields.Text();
            break;
        case Kind::Attributes:
            reply.Mode = ModeOf(fields);
            break;
        default:
            return std::nullopt;
    }
    return fields.Fine() ? std::optional(reply) : std::nullopt;
}

}  // namespace

Request::Request(Kind kind, quint32 ownId) : id(ownId) {
    content.append(static_cast<char>(kind));
    Number(id);
}

Request& Request::Number(quint32 value) {
    content += BigEndian(value);
    return *this;
}

Request& Request::LongNumber(quint64 value) {
    content += BigEndian(value);
    return *this;
}

Request& Request::Text(const QByteArray& bytes) {
    Number(static_cast<quint32>(bytes.size()));
    content += bytes;
    return *this;
}

QByteArray Request::Bytes() const {
    return BigEndian(static_cast<quint32>(content.size())) + content;
}

void Replies::Add(const QByteArray& bytes) {
    if (!broken) buffer += bytes;
}

std::optional<Reply> Replies::Next() {
    if (broken || buffer.size() < lengthSize) return std::nullopt;
    const auto length = qFromBigEndian<quint32>(buffer.constData());
    broken = length > longestReply;
    if (broken || buffer.size() - lengthSize < static_cast<qsizetype>(length)) return std::nullopt;
    std::optional<Reply> reply = Parse(buffer.mid(lengthSize, length));
    broken = !reply;
    if (reply) buffer.remove(0, lengthSize + static_cast<qsizetype>(length));
    return reply;
}

}  // namespace Sftp
