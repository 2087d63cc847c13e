#include "core/settings/setting_table.h"

#include "base/profile_file.h"
#include "fuzzer.h"

const Fuzzer settingsValues("settings_values", [](const QByteArray& bytes) {
    const auto file = ProfileReader::Of(bytes);
    Settings read;
    for (const SettingRow& row : SettingTable())
        row.Read([&](const auto& section, const auto& key) { return file.Value(section, key); },
                 read);
    Settings again;
    for (const SettingRow& row : SettingTable()) {
        const QString text = row.TextIn(read);
        const bool number = row.Form() == SettingForm::Number && !text.isEmpty();
        if (number && row.HasRange())
            MUST(text == row.Default ||
                 (text.toDouble() >= row.Least && text.toDouble() <= row.Most));
        // What a window writes is what the next start reads.
        if (text.isEmpty() || (!number && row.Form() != SettingForm::CheckBox)) continue;
        row.Read([&text](const auto&, const auto&) { return text; }, again);
        MUST(row.TextIn(again) == text);
    }
});
