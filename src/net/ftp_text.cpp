#include "net/ftp_text.h"

#include <QStringDecoder>

#include <algorithm>
#include <limits>

namespace {
bool IsDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}
}  // namespace

qint32 LeadingNumber(const QString& text) {
    constexpr qint64 largest = std::numeric_limits<qint32>::max();
    const auto* at = std::find_if(text.cbegin(), text.cend(), [](QChar c) { return c != u' '; });
    qint64 number = 0;
    for (; at != text.cend() && IsDigit(*at); ++at)
        number = std::min(largest, number * 10 + at->digitValue());
    return static_cast<qint32>(number);
}

QString PortArgument(const QHostAddress& address, quint16 port) {
    return QStringLiteral("%1,%2,%3")
        .arg(address.toString().replace(u'.', u','))
        .arg(port / 256)
        .arg(port % 256);
}

bool HasControlCharacters(const QString& text) {
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c < QChar(0x20) || c == QChar(0x7F); });
}

QString FromServer(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}
