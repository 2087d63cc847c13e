#pragma once

#include <QList>
#include <QString>

#include <memory>
#include <utility>

class ProfileText;

// What of a value is read; the rest of a longer one is not.
constexpr int LongestSetting = 255;  // characters

// Whatever is larger is no settings file, and nobody waits for it to be searched.
constexpr int LargestSettingsFile = 1024 * 1024;  // bytes

// What a file holds, to its last byte.
struct ProfileBytes {
    enum class Fault { None, Unreadable, TooLarge } Is = Fault::None;
    QByteArray Bytes = {};
};
[[nodiscard]] ProfileBytes ReadProfile(const QString& file);

// Profile (INI) files as the system's profile functions treat them: one call for each value, the
// file is never held open. ftpOptions.ini and Position.ini are such files. A damaged or binary file
// has no settings, and writing keeps what is in it. To be used from one thread only.

// The value of `key` in `section`, at most LongestSetting characters, without surrounding blanks
// and without a pair of quotes around it; empty when file, section or key is missing or the file is
// unreadable, and null then, too. Section and key names are compared without regard to case; the
// first match counts.
[[nodiscard]] QString ReadSetting(const QString& file, const QString& section, const QString& key);

// The same for many values of a file as it is at this moment: for each single one the system would
// be asked whether it has changed. Not to be kept while something is written.
class ProfileReader {
  public:
    explicit ProfileReader(const QString& file);
    // Of what has been read elsewhere.
    [[nodiscard]] static ProfileReader Of(const QByteArray& bytes);
    [[nodiscard]] QString Value(const QString& section, const QString& key) const;

  private:
    explicit ProfileReader(std::shared_ptr<const ProfileText> ownText) : text(std::move(ownText)) {}

    std::shared_ptr<const ProfileText> text;  // null: no settings
};

// Sets the value, creating file, section and key where missing. Everything else in the file stays
// as it is, byte for byte: encoding, line ends, order, comments, unknown lines. The file is
// replaced as a whole and readable by its owner only. Returns 0 when nothing was written: the file
// cannot be replaced, is too large to be a settings file, the value has a line break or NUL in it,
// or a name is one that cannot be found again.
int WriteSetting(const QString& file, const QString& section, const QString& key,
                 const QString& value);

struct ProfileEntry {
    QString Section;
    QString Key;
    QString Value;

    bool operator==(const ProfileEntry&) const = default;
};

// Sets all values at once, in this order: either every one is in the file afterwards, or the file
// is as before and the result is 0, for the reasons for which WriteSetting gives it.
[[nodiscard]] int WriteSettings(const QString& file, const QList<ProfileEntry>& entries);

// Takes the right to read a file that somebody has written by hand from everybody but its owner,
// where the system has such rights.
void KeepToOwner(const QString& file);

// The number at the start of a text as settings mean it: blanks, a sign, digits with a decimal
// point among them; whatever follows does not count. 0 when there is none; a number out of range is
// the nearest in range.
[[nodiscard]] double Val(const QString& text);

// The same for whole numbers of 32 bits: "75.9" is 75.
[[nodiscard]] int ValLong(const QString& text);
