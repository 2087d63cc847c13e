#pragma once

#include <QString>

#include <bitset>
#include <optional>

// Minutes of a week, as the clocks of the place show them. Days are counted as QDate does, Monday
// is 1; minutes from midnight, 0 to 1440.
class WeekHours {
  public:
    static constexpr int Days = 7;
    static constexpr int MinutesOfDay = 24 * 60;

    [[nodiscard]] bool Holds(int day, int minute) const { return minutes[PlaceOf(day, minute)]; }
    // Puts in, or takes out, the minutes of a day from the first one to before the last one; where
    // that is not after the first, over midnight into the next day.
    void Set(int day, int from, int to, bool in = true);
    [[nodiscard]] bool Any() const { return minutes.any(); }
    // "mo-fr 06:00-22:00; sa,su 08:00-20:00"; empty where there is no minute.
    [[nodiscard]] QString ToText() const;

    [[nodiscard]] bool operator==(const WeekHours&) const = default;

  private:
    [[nodiscard]] static std::size_t PlaceOf(int day, int minute) {
        return static_cast<std::size_t>((day - 1) * MinutesOfDay + minute);
    }
    [[nodiscard]] QString RangesOf(int day) const;

    std::bitset<Days * MinutesOfDay> minutes;
};

// Why hours cannot be read.
struct HoursFault {
    enum class Kind {
        UnknownDay,   // a word that is no day
        TwoMeanings,  // "di" is a Tuesday or a Sunday
        NoTime,       // where there must be one
        WrongTime,    // such as 24:01
        NoRange,      // a time that nothing leads from, or that ends as it begins
        NoSemicolon,  // between two entries
        NoPlace,      // the sun needs one
    };
    Kind Is = Kind::NoTime;
    qsizetype At = 0;   // the first character that is wrong, counted from 0
    QString What = {};  // what stands there
};

// When pictures are published, as the setting has it: "" always, "sun" while it is light, else days
// and times of the week.
struct Hours {
    enum class Kind { Always, Week, Sun };
    Kind Is = Kind::Always;
    WeekHours Week = {};

    // Entries are separated by semicolons; each has days (none: all of them) and times (none: the
    // whole day). Days are English, German or French words of two letters or more. fault: why the
    // text cannot be read; it counts as always then.
    [[nodiscard]] static Hours Parse(const QString& text, std::optional<HoursFault>& fault);
};
