#include "texts/texts.h"

#include <QFile>

#include <algorithm>

namespace {

// As the settings have them; in the order of Language.
const std::array names{QStringLiteral("english"), QStringLiteral("deutsch"),
                       QStringLiteral("franz")};

std::size_t Index(Texts::Language language) {
    return static_cast<std::size_t>(language);
}

}  // namespace

Texts::Texts(Language language)
    : files{ProfileText(File(Language::English)), ProfileText(File(Language::German)),
            ProfileText(File(Language::French))},
      current(language) {}

std::optional<Texts::Language> Texts::Named(const QString& setting) {
    if (setting.isEmpty()) return Language::English;
    const auto found = std::ranges::find(names, setting);
    if (found == names.end()) return std::nullopt;
    return static_cast<Language>(found - names.begin());
}

QByteArray Texts::File(Language language) {
    QFile file(":/texts/" + names.at(Index(language)) + ".ini");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Texts::SetLanguage(Language language) {
    if (language == current) return;
    current = language;
    emit Changed();
}

QString Texts::Get(const QString& section, const QString& key) const {
    if (const auto text = files.at(Index(current)).Value(section, key)) return *text;
    const auto english = files.at(Index(Language::English)).Value(section, key);
    return english.value_or(u'?' + section + u'.' + key);
}
