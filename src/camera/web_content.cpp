#include "camera/web_content.h"

#include "camera/whole_picture.h"

#include <algorithm>
#include <array>

namespace {

constexpr qsizetype enoughToJudge = 16;  // bytes

bool BeginsLikeAPicture(const QByteArray& bytes) {
    static constexpr std::array signs{"\xFF\xD8\xFF", "\x89PNG", "GIF8", "BM"};
    return std::ranges::any_of(signs, [&](const char* sign) { return bytes.startsWith(sign); });
}

bool IsPage(const QByteArray& type, const QByteArray& bytes) {
    if (bytes.startsWith("#EXTM3U")) return false;  // the list of a stream's pieces
    const QByteArray begin = bytes.left(enoughToJudge).trimmed().toLower();
    return begin.isEmpty() || begin.startsWith("<!doctype html") || begin.startsWith("<html") ||
           type.startsWith("text/") || type.startsWith("application/json");
}

WebContent::Kind JudgeContent(const QByteArray& type, bool hasLength, const QByteArray& bytes) {
    using Kind = WebContent::Kind;
    const QByteArray kind = type.trimmed().toLower();
    const bool moving = kind.startsWith("video/") || kind.startsWith("audio/");
    if (kind.startsWith("multipart/") || (moving && !hasLength)) return Kind::Stream;
    if (bytes.size() < enoughToJudge) return Kind::Unknown;
    if (BeginsLikeAPicture(bytes)) return Kind::Picture;
    return IsPage(kind, bytes) ? Kind::Neither : Kind::Stream;
}

}  // namespace

void WebContent::Take(const QByteArray& more, bool quiet) {
    // What came before the kind was known has not been looked at.
    const qsizetype known = Is == Kind::Unknown ? 0 : Bytes.size();
    Bytes += more;
    if (Is == Kind::Unknown) Is = JudgeContent(Type, HasLength, Bytes);
    if (Is == Kind::Picture && !HasLength) LookForTheEnd(known, quiet);
}

// Of an answer that does not tell its length. known: as many bytes as were looked at before.
void WebContent::LookForTheEnd(qsizetype known, bool quiet) {
    // One picture behind the other: the first will do.
    static const QByteArray next = "\xFF\xD9\xFF\xD8\xFF";
    const qsizetype end = Bytes.indexOf(next, std::max<qsizetype>(0, known - next.size()));
    if (end >= 0) Bytes.truncate(end + 2);
    // Some cameras keep the line although the picture is over.
    Complete = end >= 0 || (quiet && JpegWhole(reinterpret_cast<const uchar*>(Bytes.constData()),
                                               Bytes.size()));
}
