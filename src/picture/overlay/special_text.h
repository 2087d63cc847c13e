#pragma once

#include <QString>

#include <array>
#include <cstddef>

// The text of an overlay, as functions of values. Lines are separated by carriage return + line
// feed; the words "Date" and "Date, Time" in the operator's lines stand for date and time.

inline constexpr std::size_t TextLines = 8;

// The operator's own text and the way it is shown.
struct SpecialText {
    std::array<QString, TextLines> Lin;
    bool TextInRows = false;     // a row at a time instead of the whole text
    bool TextRowsAlone = false;  // without date and time above the row
    int TextPic = 0;             // pictures of a row; 0: the first row with text stays
};

// Whose turn it is when the text is shown a row at a time.
struct RowTurns {
    int Counter = 0;  // pictures of this round, with the places that empty rows take
    QString Row;      // the row shown last, date and time in words
};

// The whole text: eight lines, so seven line breaks, the empty ones too. A first line that begins
// with "Date" becomes the date and time as a whole, then the first "Date, Time" within the text
// does. dateTime: both, joined.
[[nodiscard]] QString WholeText(const SpecialText& text, const QString& dateTime);

// Whether the first line has more in it than the words for date and time that it begins with, all
// of which the whole text leaves out.
[[nodiscard]] bool LosesRest(const SpecialText& text);

// The row for one more picture, of the eight in turn, and moves `turns` on. An empty row passes its
// turn on to the next at the cost of one picture; behind the last row with text the pictures go
// without, for what is left of the round.
[[nodiscard]] QString NextRow(const SpecialText& text, RowTurns& turns, const QString& dateTime);

// What mode 2 puts behind date and time: the text without empty lines at its end and without the
// words for a second date at the beginning of the first row; the rest of that row stays.
[[nodiscard]] QString NextAppendix(const SpecialText& whole, RowTurns& turns,
                                   const QString& dateTime);

// The text as it is for one more picture, whole or a row of it.
[[nodiscard]] QString NextSpecialText(const SpecialText& text, RowTurns& turns,
                                      const QString& dateTime);
