#pragma once

#include <QList>
#include <QString>

// The code that a text from the server begins with: the number that its first three characters
// give, 0 when they do not start with one.
[[nodiscard]] int ReplyCodeOf(const QString& text);

// Whether a reply with this code refuses what was asked, for now or for good.
[[nodiscard]] constexpr bool IsRefusal(int replyCode) {
    return replyCode >= 400;
}

// Puts the reply lines together again that arrive cut or joined, so that what a reply says does
// not hang on where the network cut the server's text. A reply of several lines counts when its
// last line has come; the lines inside it are text, whatever they start with.
class ReplyLines {
  public:
    // Takes in the next chunk.
    void Feed(const QString& chunk);

    // Starts anew with a new connection.
    void Reset();

    // Forgets the codes: a command is sent, and what comes now is the reply to it.
    void Forget();

    // Counts the reply that has begun as if it had ended, because nobody waits for its end any
    // longer. Should the end come all the same, it is not taken for the reply to the next command.
    void CountOpen();

    // Whether a line, or a reply of several lines, has begun whose end is still to come.
    [[nodiscard]] bool Unfinished() const {
        return openReply != 0 || EndsTwice() || !line.isEmpty();
    }

    // Whether the last line may be the late end of a reply that was counted without it, or the
    // reply to the command since then, with the same code. Another reply behind it tells.
    [[nodiscard]] bool EndsTwice() const { return late != 0; }

    QList<int> Codes;  // of every reply that has ended since Forget

  private:
    void TakeLine();

    QString line;          // the unfinished last line, its first characters only
    bool skipped = false;  // the rest of that line has no meaning
    int openReply = 0;     // the code of the unfinished reply of several lines
    int counted = 0;       // the code of the one counted without its end, which may still come
    bool asked = true;     // a command was sent since then
    int late = 0;          // see EndsTwice
};
