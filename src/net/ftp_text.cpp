#include "net/ftp_text.h"

#include <QStringDecoder>

#include <algorithm>

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
