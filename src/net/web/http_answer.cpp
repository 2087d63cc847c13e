#include "net/web/http_answer.h"

#include <algorithm>

namespace {

constexpr qsizetype mostLines = 65'536;  // bytes of all lines together
constexpr qsizetype mostBody = 65'536;
constexpr int decimal = 10;
constexpr int hexadecimal = 16;

bool Same(const QByteArray& a, const QByteArray& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// Digits only, few enough for what is counted.
std::optional<quint64> Length(const QByteArray& text, int base) {
    constexpr qsizetype mostDigits = 15;
    bool fine = !text.isEmpty() && text.size() <= mostDigits && text.at(0) != '+';
    const quint64 length = fine ? text.toULongLong(&fine, base) : 0;
    return fine ? std::optional(length) : std::nullopt;
}

bool Lists(const QList<QByteArray>& values, const QByteArray& word) {
    return std::any_of(values.begin(), values.end(), [&word](const QByteArray& value) {
        const QList<QByteArray> items = value.split(',');
        return std::any_of(items.begin(), items.end(),
                           [&word](const QByteArray& item) { return Same(item.trimmed(), word); });
    });
}

}  // namespace

QList<QByteArray> HttpAnswer::All(const QByteArray& name) const {
    QList<QByteArray> values;
    for (const auto& [other, value] : Headers)
        if (Same(other, name)) values << value;
    return values;
}

QString HttpAnswer::Line() const {
    return QStringLiteral("%1 %2").arg(Status).arg(QString::fromUtf8(Reason)).trimmed();
}

HttpAnswerReader::State HttpAnswerReader::Is() const {
    switch (part) {
        case Part::Whole:
            return State::Whole;
        case Part::Cut:
            return State::Cut;
        case Part::Nonsense:
            return State::Nonsense;
        default:
            return State::Reading;
    }
}

void HttpAnswerReader::Feed(const QByteArray& bytes) {
    if (bytes.isEmpty()) return;
    begun = true;
    rest += bytes;
    for (bool more = true; more && Is() == State::Reading;) {
        const Part before = part;
        if (ReadsLines())
            TakeLines();
        else
            TakeBody();
        more = part != before;
    }
    if (Is() == State::Nonsense) rest.clear();
    if (Is() == State::Whole) rest.truncate(1);  // enough to know that there is something
}

void HttpAnswerReader::End() {
    if (Is() != State::Reading) return;
    keeps = false;
    part = part == Part::BodyToEnd ? Part::Whole : Part::Cut;
}

bool HttpAnswerReader::ReadsLines() const {
    return part != Part::Body && part != Part::BodyToEnd && part != Part::Chunk;
}

// Something else is told from HTTP by its first bytes, before a line ends.
bool HttpAnswerReader::MayBeHttp() const {
    static const QByteArray sign = "HTTP/1.";
    const qsizetype known = std::min(rest.size(), sign.size());
    return rest.left(known) == sign.left(known);
}

void HttpAnswerReader::TakeLines() {
    while (Is() == State::Reading && ReadsLines()) {
        if (part == Part::Status && !MayBeHttp()) part = Part::Nonsense;
        const std::optional<QByteArray> line = TakeLine();
        if (!line) return;
        Take(*line);
    }
}

std::optional<QByteArray> HttpAnswerReader::TakeLine() {
    const qsizetype end = rest.indexOf('\n', searched);
    searched = end < 0 ? rest.size() : 0;
    if (lineBytes + (end < 0 ? rest.size() : end) > mostLines) part = Part::Nonsense;
    if (end < 0 || part == Part::Nonsense) return {};
    lineBytes += end;
    QByteArray line = rest.left(end);
    rest.remove(0, end + 1);
    if (line.endsWith('\r')) line.chop(1);
    return line;
}

void HttpAnswerReader::Take(const QByteArray& line) {
    switch (part) {
        case Part::Status:
            return TakeStatus(line);
        case Part::Headers:
            return TakeHeader(line);
        case Part::ChunkLength:
            return TakeChunkLength(line);
        case Part::ChunkEnd:
            part = line.isEmpty() ? Part::ChunkLength : Part::Nonsense;
            return;
        default:
            if (line.isEmpty()) part = Part::Whole;  // behind the last chunk
    }
}

// "HTTP/1.1 201 Created"
void HttpAnswerReader::TakeStatus(const QByteArray& line) {
    constexpr qsizetype versionEnd = 8;
    constexpr qsizetype codeEnd = 12;
    constexpr int smallest = 100;
    answer = {};
    bool number = false;
    answer.Status = line.mid(versionEnd + 1, 3).toInt(&number);
    answer.Reason = line.mid(codeEnd).trimmed();
    const bool fine = number && answer.Status >= smallest && line.at(versionEnd) == ' ' &&
                      (line.size() == codeEnd || line.at(codeEnd) == ' ');
    part = fine ? Part::Headers : Part::Nonsense;
    keeps = !line.startsWith("HTTP/1.0");
}

void HttpAnswerReader::TakeHeader(const QByteArray& line) {
    if (line.isEmpty()) return BeginBody();
    const qsizetype colon = line.indexOf(':');
    // A line that goes on from the one before says nothing that counts here.
    if (colon > 0 && line.at(0) != ' ' && line.at(0) != '\t')
        answer.Headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
}

void HttpAnswerReader::BeginBody() {
    constexpr int firstFinal = 200;
    constexpr int noContent = 204;
    constexpr int notModified = 304;
    // "100 Continue" and the like: the answer is still to come.
    if (answer.Status < firstFinal) {
        part = Part::Status;
        return;
    }
    const QList<QByteArray> connection = answer.All("Connection");
    keeps = (keeps || Lists(connection, "keep-alive")) && !Lists(connection, "close");
    const QList<QByteArray> lengths = answer.All("Content-Length");
    const std::optional<quint64> length = Length(lengths.value(0), decimal);
    if (answer.Status == noContent || answer.Status == notModified) {
        part = Part::Whole;
    } else if (Lists(answer.All("Transfer-Encoding"), "chunked")) {
        part = Part::ChunkLength;
    } else if (lengths.isEmpty()) {
        part = Part::BodyToEnd;
    } else if (!length || lengths.count(lengths.first()) != lengths.size()) {
        part = Part::Nonsense;
    } else {
        missing = *length;
        part = missing > 0 ? Part::Body : Part::Whole;
    }
}

void HttpAnswerReader::TakeChunkLength(const QByteArray& line) {
    const QByteArray digits = line.left(line.indexOf(';') < 0 ? line.size() : line.indexOf(';'));
    const std::optional<quint64> length = Length(digits.trimmed(), hexadecimal);
    missing = length.value_or(0);
    lineBytes = 0;
    if (!length)
        part = Part::Nonsense;
    else
        part = missing > 0 ? Part::Chunk : Part::Trailers;
}

void HttpAnswerReader::TakeBody() {
    const bool toEnd = part == Part::BodyToEnd;
    const qsizetype taken =
        toEnd
            ? rest.size()
            : static_cast<qsizetype>(std::min<quint64>(missing, static_cast<quint64>(rest.size())));
    answer.Body += rest.left(std::min(taken, mostBody - answer.Body.size()));
    rest.remove(0, taken);
    if (toEnd) return;
    missing -= static_cast<quint64>(taken);
    if (missing == 0) part = part == Part::Chunk ? Part::ChunkEnd : Part::Whole;
}
