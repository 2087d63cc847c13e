#pragma once

#include <QStringList>

// The log in the program folder: "stillpost.log" and the two before it, "stillpost.log.1" and
// "stillpost.log.2", a megabyte each. No file is held open, so that anybody may take it away.
class LogFile {
  public:
    explicit LogFile(const QString& folder);

    // Adds a line, without its end. One that cannot be written (disk full, folder read-only) is
    // counted and forgotten; the next one that can be tells how many they were.
    void Write(const QString& line);

    // The newest lines of the log in that folder, at most so many, oldest first.
    [[nodiscard]] static QStringList Last(const QString& folder, int lines);

  private:
    [[nodiscard]] bool Append(const QByteArray& bytes) const;
    [[nodiscard]] bool MakeRoom(qint64 bytes) const;

    QString path;
    int lost = 0;
};
