#include "net/ftp/ftp_text.h"

#include <algorithm>

QString PortArgument(const QHostAddress& address, quint16 port) {
    return QStringLiteral("%1,%2,%3")
        .arg(address.toString().replace(u'.', u','))
        .arg(port / 256)
        .arg(port % 256);
}

QString EprtArgument(const QHostAddress& address, quint16 port) {
    // The name of this computer's network card means nothing to the server.
    QHostAddress plain = address;
    plain.setScopeId({});
    return QStringLiteral("|2|%1|%2|").arg(plain.toString()).arg(port);
}

bool HasControlCharacters(const QString& text) {
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c < QChar(0x20) || c == QChar(0x7F); });
}

QString FromServer(const QByteArray& bytes) {
    QString text;
    for (qsizetype from = 0, next = 0; from < bytes.size(); from = next) {
        const qsizetype end = bytes.indexOf('\n', from);
        next = end < 0 ? bytes.size() : end + 1;
        const QByteArray line = bytes.mid(from, next - from);
        text += line.isValidUtf8() ? QString::fromUtf8(line) : QString::fromLatin1(line);
    }
    return text;
}

qsizetype CutCharacter(const QByteArray& bytes) {
    const qsizetype longest = std::min<qsizetype>(bytes.size(), 3);
    for (qsizetype count = 1; count <= longest; ++count) {
        const auto byte = static_cast<uchar>(bytes[bytes.size() - count]);
        if (byte < 0x80) return 0;
        if (byte < 0xC0) continue;  // inside a character, whose first byte is further ahead
        const int needed = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
        return count < needed ? count : 0;
    }
    return 0;
}
