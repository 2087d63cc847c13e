#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

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
