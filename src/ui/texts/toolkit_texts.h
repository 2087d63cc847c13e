#pragma once

#include <QTranslator>

class Texts;

// The toolkit's own windows (message boxes, the choosers for fonts, colours and files) in the
// language in use. Their texts stand in section "Toolkit", each under its English words without
// blanks and signs; what is not there stays English. Windows that open later follow a change.
class ToolkitTexts : public QTranslator {
    Q_OBJECT

  public:
    // The texts outlive this.
    explicit ToolkitTexts(const Texts& ownTexts, QObject* parent = nullptr);
    ~ToolkitTexts() override;

    [[nodiscard]] QString translate(const char* context, const char* source, const char*,
                                    int) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }

  private:
    const Texts& texts;
};
