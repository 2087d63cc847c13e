#pragma once

#include <QString>

#include <limits>
#include <span>

enum class SettingForm {
    Text,
    Number,
    CheckBox,   // "0" or "1"; any number but 0 is on
    TrueFalse,  // the word "true", or anything else
};

// One key of the settings file. docs/settings.md shows the same table.
struct SettingRow {
    QStringView Section;
    QStringView Key;  // '#' stands for a number that counts from 0
    SettingForm Form = SettingForm::Text;
    QStringView Default = u"";  // what an empty or missing value means
    QStringView WrittenBy = u"";
    QStringView ReadBy = u"";
    int Least = std::numeric_limits<int>::min();  // range of a number, both ends included
    int Most = std::numeric_limits<int>::max();
    QStringView Else = u"";  // for a number out of range: the value to use, or "nearest"

    [[nodiscard]] bool HasRange() const { return !Else.isEmpty(); }
};

// All keys, section by section.
[[nodiscard]] std::span<const SettingRow> SettingTable();

// The row of a key, its number replaced by '#'. There is one: names come from this program.
[[nodiscard]] const SettingRow& SettingRowOf(QStringView section, QStringView key);
