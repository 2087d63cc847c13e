#pragma once

#include <QByteArray>

#include <array>
#include <optional>

// What the program did in one minute; of several things the last of this list counts.
enum class MinuteState : quint8 {
    NotRunning,
    OutsideHours,  // of the times that are to be published
    Waiting,       // running well, no picture was due
    Failed,        // to publish
    CameraGone,
    Published,
};

struct MinuteRecord {
    MinuteState State = MinuteState::NotRunning;
    quint16 Pictures = 0;      // published
    quint32 Bytes = 0;         // of all of them
    quint32 Milliseconds = 0;  // that their uploads took together

    [[nodiscard]] bool operator==(const MinuteRecord&) const = default;
};

// The last 24 hours, minute by minute. The minutes are counted since 1970, so that summer time
// neither doubles nor skips one.
class DayRecord {
  public:
    static constexpr int Minutes = 24 * 60;

    // It is that minute now. What lies a day or more before it is forgotten; so is what lies behind
    // it, from a time when the clock was wrong.
    void MoveTo(qint64 minute);
    // What happens now. Returns whether that changes the record.
    bool Note(MinuteState state);
    void AddPicture(qint64 bytes, qint64 milliseconds);

    [[nodiscard]] qint64 Last() const { return last; }
    // A minute of the record; an empty one for any other.
    [[nodiscard]] MinuteRecord At(qint64 minute) const;

    // For a file: always as many bytes.
    [[nodiscard]] QByteArray ToBytes() const;
    // Nothing when they are not what ToBytes has made.
    [[nodiscard]] static std::optional<DayRecord> FromBytes(const QByteArray& bytes);

  private:
    [[nodiscard]] MinuteRecord& Of(qint64 minute);

    std::array<MinuteRecord, Minutes> ring;  // each minute at its remainder
    qint64 last = 0;
};
