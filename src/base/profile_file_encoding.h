#pragma once

#include <QByteArray>
#include <QString>

// The content of a profile file as text, with what it takes to turn it into the same bytes again.
struct EncodedText {
    enum class Encoding { Utf8, Windows1252, Utf16LittleEndian, Utf16BigEndian };

    Encoding As = Encoding::Utf8;
    QByteArray Mark;  // the byte order mark at the beginning, if there was one
    QString Text;
    QByteArray Tail;  // half a UTF-16 character at the end

    // Takes any bytes: UTF-16 with its mark, else UTF-8 when they are valid UTF-8, else
    // Windows-1252, whose five undefined bytes stand for the control characters of the same number.
    [[nodiscard]] static EncodedText Decode(const QByteArray& bytes);

    // The text as bytes: those it was made from, when it is unchanged. Windows-1252 gives way to
    // UTF-8 when it cannot hold the text.
    [[nodiscard]] QByteArray Encode() const;
};
