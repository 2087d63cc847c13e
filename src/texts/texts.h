#pragma once

#include "base/profile_text.h"

#include <QObject>
#include <QString>

#include <array>
#include <optional>

// Every text of the user interface in the language in use. The texts lie in one file for each
// language, a section for each window, built into the program; windows ask for theirs again when
// the language changes.
class Texts : public QObject {
    Q_OBJECT

  public:
    enum class Language { English, German, French };

    explicit Texts(Language language);

    [[nodiscard]] Language Current() const { return current; }
    // Changed() only when it is another one than before.
    void SetLanguage(Language language);

    // The text of that section and key, blanks at its ends included. A text that the language lacks
    // is given in English, one that English lacks as "?section.key".
    [[nodiscard]] QString Get(const QString& section, const QString& key) const;

    // The language of that name in the settings, English for none; nothing for any other word.
    [[nodiscard]] static std::optional<Language> Named(const QString& setting);
    // The content of the file of a language.
    [[nodiscard]] static QByteArray File(Language language);

  signals:
    void Changed();

  private:
    std::array<ProfileText, 3> files;  // in the order of Language
    Language current;
};
