#pragma once

#include <QString>

#include <array>

// The text of an overlay, as functions of values. Lines are separated by carriage return + line
// feed; the words "Date" and "Date, Time" in the operator's lines stand for date and time.

// The operator's own text and the way it is shown.
struct SpecialText {
    std::array<QString, 8> Lin;
    bool InRows = false;          // a row at a time instead of the whole text
    bool DateInFirstRow = false;  // date and time above the row
    int PicturesPerRow = 0;       // 0 to 32767; 0: the first row with text stays
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

// The row for one more picture, of the eight in turn, and moves `turns` on. An empty row passes its
// turn on to the next at the cost of one picture; behind the last row with text the pictures go
// without, for what is left of the round.
[[nodiscard]] QString NextRow(const SpecialText& text, RowTurns& turns, const QString& dateTime);

// The text of an overlay mode: 0 the date, 1 the time, 2 both and the special text behind them,
// 3 the special text, any other none. In mode 2 the special text goes without empty lines at its
// end and without a second date in the first row.
[[nodiscard]] QString TextOfMode(int mode, const QString& date, const QString& time,
                                 const SpecialText& text, RowTurns& turns);
