#pragma once

#include <QHash>
#include <QStringList>

#include <optional>

// Which lines go into a log, where the same may happen ten times a second for months: of each text
// three an hour, of all together some hundred and then one a minute. What is left out is counted
// and told when the next line of its kind comes. Texts that differ in nothing but numbers are the
// same.
class LogFlow {
  public:
    // What is to be written for a text that comes now; maybe nothing. now: milliseconds of a clock
    // that never goes back.
    [[nodiscard]] QStringList Take(const QString& text, qint64 now);

  private:
    struct Kind {
        qint64 Since = 0;  // of its hour
        int Written = 0;   // in it
        int LeftOut = 0;
    };

    [[nodiscard]] bool HasRoom(qint64 now);
    void Forget();

    QHash<QString, Kind> kinds;
    std::optional<qint64> filled;  // when the room was counted last
    double room = 0;               // lines that may be written at once
    int leftOut = 0;               // because there was none
};

// A text as it stands in a log: one line of bounded length, without control characters. secrets:
// passwords; they are left out wherever they stand, and so is what stands in front of the host of
// an address.
[[nodiscard]] QString LogText(const QString& text, const QStringList& secrets);
