#include "base/profile_file_encoding.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <array>
#include <optional>

namespace {

using Encoding = EncodedText::Encoding;

// What Windows-1252 has in the place of the control characters 0x80 to 0x9f.
constexpr std::array<char16_t, 32> windowsCharacters = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};
constexpr char16_t firstSpecial = 0x80;
constexpr char16_t afterSpecials = 0xa0;

QString FromWindows(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char each) -> QChar {
        const auto byte = static_cast<uchar>(each);
        if (byte < firstSpecial || byte >= afterSpecials) return QChar(byte);
        return windowsCharacters[byte - firstSpecial];
    });
    return text;
}

// A profile file has no other place to tell its encoding. No UTF-8 has these last three bytes.
const QByteArray windowsComment = "; Windows-1252, not UTF-8: \xe4\xf6\xfc";

// Nothing when a character has no place in Windows-1252.
std::optional<QByteArray> ToWindows(const QString& text) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char* next = bytes.data();
    for (const QChar each : text) {
        char16_t code = each.unicode();
        if (code >= firstSpecial && (code < afterSpecials || code > 0xff)) {
            const auto* const place =
                std::find(windowsCharacters.begin(), windowsCharacters.end(), code);
            if (place == windowsCharacters.end()) return std::nullopt;
            code = static_cast<char16_t>(firstSpecial + (place - windowsCharacters.begin()));
        }
        *next++ = static_cast<char>(code);
    }
    return bytes;
}

// Nothing when the bytes are no UTF-8, or not in the one form that gives the same bytes again.
std::optional<QString> FromUtf8(QByteArrayView bytes) {
    if (!QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8()) return std::nullopt;
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom |
                                                       QStringConverter::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError() || text.toUtf8() != bytes) return std::nullopt;
    return text;
}

// The toolkit copies unit by unit: half a surrogate pair in a damaged file stays what it is.
QStringConverter::Encoding Utf16(Encoding as) {
    return as == Encoding::Utf16LittleEndian ? QStringConverter::Utf16LE
                                             : QStringConverter::Utf16BE;
}

}  // namespace

EncodedText EncodedText::Decode(const QByteArray& bytes) {
    EncodedText result;
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")) {
        result.As =
            bytes.startsWith("\xff") ? Encoding::Utf16LittleEndian : Encoding::Utf16BigEndian;
        result.Mark = bytes.left(2);
        result.Tail = bytes.right(bytes.size() % 2);
        const QByteArrayView content = QByteArrayView(bytes).sliced(2).chopped(bytes.size() % 2);
        QStringDecoder decoder(Utf16(result.As), QStringConverter::Flag::ConvertInitialBom);
        result.Text = decoder(content);
        return result;
    }
    if (bytes.startsWith("\xef\xbb\xbf")) result.Mark = bytes.left(3);
    QByteArrayView content = QByteArrayView(bytes).sliced(result.Mark.size());
    const std::optional<QString> text = FromUtf8(content);
    result.As = text ? Encoding::Utf8 : Encoding::Windows1252;
    for (const char* const lineEnd : {"\n", "\r\n"})
        if (content.startsWith(windowsComment + lineEnd)) result.Comment = windowsComment + lineEnd;
    content = content.sliced(result.Comment.size());
    result.Text = text ? *text : FromWindows(content);
    return result;
}

QByteArray EncodedText::Encode() {
    if (As == Encoding::Utf16LittleEndian || As == Encoding::Utf16BigEndian)
        return Mark + QByteArray(QStringEncoder(Utf16(As))(Text)) + Tail;
    if (As == Encoding::Utf8) return Mark + Text.toUtf8();
    std::optional<QByteArray> bytes = ToWindows(Text);
    if (!bytes) {
        As = Encoding::Utf8;
        Comment.clear();
        return Encode();
    }
    if (Comment.isEmpty() && FromUtf8(*bytes))
        Comment = windowsComment + (Text.contains("\r\n") ? "\r\n" : "\n");
    return bytes->prepend(Mark + Comment);
}
