#pragma once

#include "core/settings/settings.h"

#include <QRegularExpression>
#include <QString>

#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <variant>

// Gives the text of a key as ReadSetting does.
using SettingSource = std::function<QString(const QString& section, const QString& key)>;

enum class SettingForm {
    Text,
    Number,
    CheckBox,   // "0" or "1"; any number but 0 is on
    TrueFalse,  // the word "true", or anything else
};

// What a number out of range counts as.
enum class Outside { Nearest, Default, Most, WholeMinutesOff };

// The field that a key fills; of a key that windows alone read, just its form.
using SettingField =
    std::variant<SettingForm, QString Settings::*, bool Settings::*, int Settings::*,
                 double Settings::*, QColor Settings::*, OverlayMode Settings::*,
                 OverlayPlace Settings::*, DateForm Settings::*, TimeForm Settings::*,
                 QStringList Settings::*, std::array<QString, TextLines> Settings::*>;

// One key of the settings file. docs/settings.md shows the same table. A key may have two rows when
// it fills two fields.
struct SettingRow {
    QString Section;
    QString Key;  // '#' stands for a number that counts from 0, in a list up to the first empty one
    SettingField Field;
    int Least = std::numeric_limits<int>::min();  // range of a number; of a list, how many
    int Most = std::numeric_limits<int>::max();
    Outside Else = Outside::Nearest;
    // For the whole of a text, made ready once; none: any text.
    std::optional<QRegularExpression> Pattern;
    QString Fault;        // told of a number out of range, with what is written as %1
    QString On;           // the one text that is on; empty: any number but 0
    QString Default;      // what an empty or missing value means
    bool Secret = false;  // nobody but the operator shall see the value

    SettingRow(QStringView section, QStringView key, const SettingField& field);
    SettingRow(QStringView section, QStringView key, const SettingField& field, int least, int most,
               Outside outside, QStringView fault = {});
    SettingRow(QStringView section, QStringView key, bool Settings::*field, QStringView on);
    SettingRow(QStringView section, QStringView key, QString Settings::*field, QStringView pattern);

    [[nodiscard]] SettingForm Form() const;
    // Whether a key of the settings file, with a number in the place of '#', is this one.
    [[nodiscard]] bool IsKey(const QString& key) const;
    [[nodiscard]] bool HasRange() const { return Least > std::numeric_limits<int>::min(); }
    // Fills the field; an empty value leaves it as it is unless empty is a value of its own.
    void Read(const SettingSource& source, Settings& settings) const;
    // What the field holds, as the file would have it; empty for lists and what windows alone read.
    [[nodiscard]] QString TextIn(const Settings& settings) const;
    // Whether a text fits the pattern.
    [[nodiscard]] bool Allows(const QString& text) const;
    // Whether what is written counts, or the default in its place: a missing value (null) never
    // does, an empty one where the pattern allows it.
    [[nodiscard]] bool Counts(const QString& written) const;
};

// All keys, section by section.
[[nodiscard]] std::span<const SettingRow> SettingTable();

// The first row of a key, its number replaced by '#'. There is one: names come from this program.
[[nodiscard]] const SettingRow& SettingRowOf(QStringView section, QStringView key);
// The same of a key as it stands in a settings file; null when there is none.
[[nodiscard]] const SettingRow* FindSettingRow(const QString& section, const QString& key);
