#include "picture/overlay/special_text.h"

#include <algorithm>

namespace {

const QString lineBreak = QStringLiteral("\r\n");
const QString dateWord = QStringLiteral("Date");
const QString dateTimeWords = QStringLiteral("Date, Time");

QString WithDateTime(QString text, const QString& dateTime) {
    const qsizetype at = text.indexOf(dateTimeWords);
    return at < 0 ? text : text.replace(at, dateTimeWords.size(), dateTime);
}

// All lines, with another one in place of the first.
QString Joined(const SpecialText& text, QString first) {
    for (std::size_t i = 1; i < text.Lin.size(); ++i) first += lineBreak + text.Lin[i];
    return first;
}

// A first row that reads "Date" stands for date and time. It stays in words, so that a row that is
// shown again later shows the time of each picture.
QString RowOf(const SpecialText& text, const QString& line) {
    return &line == &text.Lin.front() && line == dateWord ? dateTimeWords : line;
}

// Without a number of pictures no row ever gives way to the next.
void StayOnFirstRow(const SpecialText& text, RowTurns& turns) {
    const auto* const row = std::find_if(text.Lin.begin(), text.Lin.end(),
                                         [](const QString& line) { return !line.isEmpty(); });
    turns.Row = row == text.Lin.end() ? QString() : RowOf(text, *row);
    turns.Counter = 0;
}

void TakeTurn(const SpecialText& text, RowTurns& turns) {
    ++turns.Counter;
    int lastPicture = 0;  // of the row looked at
    for (const QString& line : text.Lin) {
        lastPicture += text.TextPic;
        const bool its = turns.Counter <= lastPicture;
        if (its) turns.Row = RowOf(text, line);
        if (its && !turns.Row.isEmpty()) break;
        if (turns.Row.isEmpty()) ++turns.Counter;
    }
    if (turns.Row.isEmpty()) ++turns.Counter;
    const int round = static_cast<int>(text.Lin.size()) * text.TextPic;
    if (turns.Counter >= round) turns.Counter = 0;
}

}  // namespace

bool LosesRest(const SpecialText& text) {
    const QString& first = text.Lin.front();
    return first.startsWith(dateWord) && first != dateWord && first != dateTimeWords;
}

QString WholeText(const SpecialText& text, const QString& dateTime) {
    const QString& first = text.Lin.front();
    return WithDateTime(Joined(text, first.startsWith(dateWord) ? dateTime : first), dateTime);
}

QString NextRow(const SpecialText& text, RowTurns& turns, const QString& dateTime) {
    if (text.TextPic == 0)
        StayOnFirstRow(text, turns);
    else
        TakeTurn(text, turns);
    const QString row = WithDateTime(turns.Row, dateTime);
    if (text.TextRowsAlone) return row;
    return row.isEmpty() ? dateTime : dateTime + lineBreak + row;
}

QString NextSpecialText(const SpecialText& text, RowTurns& turns, const QString& dateTime) {
    return text.TextInRows ? NextRow(text, turns, dateTime) : WholeText(text, dateTime);
}

QString NextAppendix(const SpecialText& whole, RowTurns& turns, const QString& dateTime) {
    SpecialText text = whole;
    text.TextRowsAlone = true;
    QString& first = text.Lin.front();
    if (first == dateWord) first.clear();
    if (first.startsWith(dateTimeWords)) first = first.sliced(dateTimeWords.size()).trimmed();
    QString appendix = text.TextInRows ? NextRow(text, turns, dateTime)
                                       : WithDateTime(Joined(text, first), dateTime);
    while (appendix.endsWith(lineBreak)) appendix.chop(lineBreak.size());
    return appendix;
}
