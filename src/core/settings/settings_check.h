#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

class Texts;

// A line of a settings file that does not do what it seems to.
struct SettingFinding {
    Q_GADGET

  public:
    // The sentence for each has its name in the texts.
    enum class What {
        NoSetting,        // neither a section nor a key
        UnknownSection,   // with all that stands in it
        RepeatedSection,  // the first one counts
        UnknownKey,
        RepeatedKey,  // the first one counts
        TooLong,      // only the beginning counts
        NotANumber,
        OutOfRange,
        NotAllowed,  // does not fit the pattern of its setting
    };
    Q_ENUM(What)

    What Is = What::NoSetting;
    int Line = 0;  // counts from 1
    QString Section = {};
    QString Key = {};
    QString Written = {};  // of numbers and patterns alone: other values may be a password
    QString Counts = {};   // in its place; empty: nothing
    QString Range = {};    // "1 … 65535"; empty: none

    bool operator==(const SettingFinding&) const = default;
};

// What a person should know of the content of a settings file, in the order of its lines. The table
// of settings says which keys there are.
[[nodiscard]] QList<SettingFinding> CheckSettings(const QByteArray& file);

// What the file holds. None where it has no settings at all; fault is then the name of the sentence
// for that.
[[nodiscard]] std::optional<QByteArray> ReadSettingsFile(const QString& file, QString& fault);

// A line for those who look at the log or the status when something in the file does not do what is
// written there; empty when nothing is wrong, or there is no file. Names that the program does not
// know are no fault here: another version may know them.
[[nodiscard]] QString SettingsRemark(const QString& file, const Texts& words);
