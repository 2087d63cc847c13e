#pragma once

#include <QString>

// Message boxes behind one small interface, so that tests answer them in advance and a program
// without a display prints them instead.
class MessageBoxes {
  public:
    enum class Icon { Information, Warning, Critical };

    virtual ~MessageBoxes() = default;

    // Tells the user something. Does not wait for an answer: the program runs unattended, and a
    // message that nobody reads must not stop the pictures. The same message is open only once.
    virtual void Show(const QString& title, const QString& text, Icon icon = Icon::Warning) = 0;

    // Asks with the buttons Retry and Cancel and waits for the answer: true for Retry. Where
    // nobody can answer (no display, or nobody there after an automatic start), the answer is
    // Retry.
    [[nodiscard]] virtual bool AskRetry(const QString& title, const QString& text) = 0;

    // Asks with the buttons Yes and No and waits for the answer: true for Yes. Where nobody can
    // answer, the answer is No.
    [[nodiscard]] virtual bool AskYes(const QString& title, const QString& text) = 0;

    // Whatever is being asked does not matter any more: the answer is Cancel or No.
    virtual void Withdraw() {}
};
