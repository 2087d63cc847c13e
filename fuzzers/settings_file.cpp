#include "base/profile_text.h"
#include "fuzzer.h"

namespace {

using Seen = ProfileText::Seen;

bool IsThat(const Seen& line, const QString& section, const QString& key) {
    return line.Is == Seen::Kind::Key &&
           line.Section.compare(section.trimmed(), Qt::CaseInsensitive) == 0 &&
           line.Key.compare(key.trimmed(), Qt::CaseInsensitive) == 0;
}

}  // namespace

// Section, key and value to be written, then the file.
const Fuzzer settingsFile("settings_file", [](const QByteArray& bytes) {
    const QByteArrayList parts = Parts(bytes, 4);
    const QString section = QString::fromUtf8(parts[0]);
    const QString key = QString::fromUtf8(parts[1]);
    const QString value = QString::fromUtf8(parts[2]);
    ProfileText file(parts[3]);
    MUST(file.Bytes() == parts[3]);
    const std::vector<Seen> before = file.Lines();
    const bool set = file.Set(section, key, value);
    if (!set) MUST(file.Bytes() == parts[3]);
    if (set) MUST(file.Value(section, key) == value);

    // Every line is there yet, in its order, and says what it said; at most one says something
    // else.
    ProfileText again(file.Bytes());
    const std::vector<Seen> after = again.Lines();
    if (set) MUST(again.Value(section, key) == value);
    std::size_t at = 0;
    int others = 0;
    for (const Seen& line : before) {
        const auto same = [&line](const Seen& each) {
            return each.Is == line.Is && each.Section == line.Section && each.Key == line.Key;
        };
        while (at < after.size() && !same(after[at])) ++at;
        MUST(at < after.size());
        if (after[at].Value != line.Value) {
            MUST(IsThat(line, section, key) && after[at].Value == value);
            ++others;
        }
        ++at;
    }
    MUST(others <= (set ? 1 : 0) && after.size() <= before.size() + 2);
});
