#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class Texts;

// A window for lines that are read, marked and copied: a caption, the lines, buttons below them.
// Escape closes it. Its texts come from the section of its name.
class LinesWindow : public QWidget {
    Q_OBJECT

  public:
    QPlainTextEdit* txtLines;
    QPushButton* btnClose;

    void Show();

  protected:
    // The texts outlive the window.
    LinesWindow(Texts& ownTexts, const QString& ownSection);

    // One more beside those that are there.
    [[nodiscard]] QPushButton* AddButton();
    // Sets the texts, also when the language changes.
    virtual void ShowTexts();
    void SetCaption(const QString& text);
    [[nodiscard]] QString Text(const QString& key) const;

    void keyPressEvent(QKeyEvent* event) override;

  private:
    Texts& texts;
    QString section;
    QLabel* caption;
    QHBoxLayout* buttons;
};
