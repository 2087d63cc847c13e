#pragma once

#include <QString>
#include <QTime>

// The server's replies of this run, newest first.
class ReplyLog {
  public:
    // Puts the reply in front, with the time of day; of the former text the first 1000 characters
    // stay.
    void Add(const QTime& time, const QString& reply);

    [[nodiscard]] const QString& Text() const { return text; }

  private:
    QString text;
};
