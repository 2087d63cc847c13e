#pragma once

#include <QTranslator>

class Texts;

// The toolkit's own windows (message boxes, the choosers for fonts, colours and files) in the
// language in use, by the translations that come with it. English is its own language.
class ToolkitTexts : public QObject {
    Q_OBJECT

  public:
    // The texts outlive this.
    explicit ToolkitTexts(const Texts& ownTexts);

  private:
    void Follow();

    const Texts& texts;
    QTranslator translator;
};
