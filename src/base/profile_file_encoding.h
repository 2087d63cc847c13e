#pragma once

#include <QByteArray>
#include <QString>

// The content of a profile file as text, with what it takes to turn it into the same bytes again.
struct EncodedText {
    enum class Encoding { Utf8, Windows1252, Utf16LittleEndian, Utf16BigEndian };

    Encoding As = Encoding::Utf8;
    QByteArray Mark;     // the byte order mark at the beginning, if there was one
    QByteArray Comment;  // the line behind it that tells of Windows-1252, if there is one
    QString Text;
    QByteArray Tail;  // half a UTF-16 character at the end

    // Takes any bytes: UTF-16 with its mark, else UTF-8 when they are valid UTF-8, else
    // Windows-1252, whose five undefined bytes stand for the control characters of the same number.
    [[nodiscard]] static EncodedText Decode(const QByteArray& bytes);

    // The text as bytes: those it was made from, when it is unchanged. Decode() finds the same text
    // in them, in the same encoding: a text in Windows-1252 whose bytes would pass for UTF-8 gets a
    // comment in front that does not. A text that Windows-1252 cannot hold becomes UTF-8 for good.
    [[nodiscard]] QByteArray Encode();
};
