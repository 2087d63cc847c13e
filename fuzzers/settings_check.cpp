#include "core/settings/settings_check.h"

#include "base/profile_text.h"
#include "core/settings/setting_table.h"
#include "fuzzer.h"

#include <algorithm>

const Fuzzer settingsCheck("settings_check", [](const QByteArray& bytes) {
    const auto lines = ProfileText(bytes).Lines();
    int last = 0;
    for (const SettingFinding& each : CheckSettings(bytes)) {
        MUST(each.Line > last);
        last = each.Line;
        MUST(std::ranges::any_of(lines, [&](const auto& line) { return line.Number == last; }));
        if (!each.Written.isEmpty()) MUST(each.Key.compare("PW", Qt::CaseInsensitive) != 0);
    }
});
