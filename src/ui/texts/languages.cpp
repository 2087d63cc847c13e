#include "ui/texts/languages.h"

#include "base/profile_file.h"
#include "core/main_state.h"
#include "core/program.h"

namespace {

const QString english = "english";
const QString german = "deutsch";
const QString french = "franz";

}  // namespace

Languages::Languages(Program& ownProgram, Texts& ownTexts)
    : program(ownProgram), texts(ownTexts), messages(ComposeMessages(ownTexts, {})) {
    connect(&program, &Program::SettingsLoaded, this, &Languages::ApplySetting);
}

void Languages::ApplySetting() {
    const QString& setting = program.State.Values.Sprache;
    if (setting == english || setting.isEmpty())
        ApplyEnglishTexts();
    else if (setting == german)
        ApplyGermanTexts();
    else if (setting == french)
        ApplyFrenchTexts();
    // Any other word leaves the language as it is.
}

void Languages::ApplyEnglishTexts() {
    Apply(Texts::Language::English);
}

void Languages::ApplyGermanTexts() {
    Apply(Texts::Language::German);
}

void Languages::ApplyFrenchTexts() {
    Apply(Texts::Language::French);
}

void Languages::Apply(Texts::Language language) {
    program.State.LangEnglish = language == Texts::Language::English;
    program.State.LangGerman = language == Texts::Language::German;
    program.State.LangFrench = language == Texts::Language::French;
    texts.SetLanguage(language);
    messages = ComposeMessages(texts, fields ? fields() : MessageFields());
}

void Languages::Choose(Texts::Language language) {
    Apply(language);
    const QString setting = language == Texts::Language::German   ? german
                            : language == Texts::Language::French ? french
                                                                  : english;
    program.State.Values.Sprache = setting;
    (void)program.ChangeSettings({{"Einstellungen", "Sprache", setting}});
}
