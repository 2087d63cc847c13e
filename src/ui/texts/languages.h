#pragma once

#include "texts/texts.h"
#include "ui/texts/messages.h"

#include <functional>

class Program;

// Switches the language of the whole user interface: the flags of the main state, the texts of the
// windows and the composed messages. The settings decide at the start and whenever they are loaded
// again; afterwards the operator does.
class Languages : public QObject {
    Q_OBJECT

  public:
    // Both outlive this.
    Languages(Program& ownProgram, Texts& ownTexts);

    void ApplyEnglishTexts();
    void ApplyGermanTexts();
    void ApplyFrenchTexts();

    // Applies the language and writes it to the settings.
    void Choose(Texts::Language language);

    // Where the messages get the fields from when a language is applied; nothing: empty fields.
    void SetFields(std::function<MessageFields()> source) { fields = std::move(source); }
    [[nodiscard]] const ComposedMessages& Messages() const { return messages; }

  private:
    void ApplySetting();
    void Apply(Texts::Language language);

    Program& program;
    Texts& texts;
    std::function<MessageFields()> fields;
    ComposedMessages messages;
};
