#pragma once

#include <QList>
#include <QString>

// The code of a reply chunk: the number that its first three characters give, 0 when they do not
// start with one.
[[nodiscard]] int ReplyCodeOf(const QString& chunk);

// Whether a reply with this code refuses what was asked, for now or for good.
[[nodiscard]] constexpr bool IsRefusal(int replyCode) {
    return replyCode >= 400;
}

// Puts the reply lines together again that arrive cut or joined, so that the outcome of a login
// does not hang on where the network cut the server's text. Lines inside a reply of several lines
// are text, whatever they start with.
class ReplyLines {
  public:
    // Takes in the next chunk.
    void Feed(const QString& chunk);

    // Starts anew with a new connection.
    void Reset();

    // Whether a line, or a reply of several lines, has begun whose end is still to come.
    [[nodiscard]] bool Unfinished() const { return openReply != 0 || !line.isEmpty(); }

    QList<int> Codes;  // of every reply begun since this was last cleared

  private:
    void TakeLine();

    QString line;        // the unfinished last line, its first characters only
    bool taken = false;  // the code of the unfinished line has been taken already
    int openReply = 0;   // the code of the unfinished reply of several lines
};
