#pragma once

#include <QWidget>

#include <functional>

class Bindings;
class QCheckBox;
class QFontDialog;
class QLabel;
class QPushButton;

// The font of the text on the pictures: a button for the toolkit's chooser, what was chosen in
// words, and the size that suits any picture. While the chooser is open every font pointed at
// counts, until it is cancelled.
class FontChooser : public QWidget {
    Q_OBJECT

  public:
    struct Choice {
        QString Name;    // empty: the usual font
        int Points = 0;  // 0: a size that suits the picture
        bool Bold = false;
        bool Italic = false;
        bool Underline = false;

        bool operator==(const Choice&) const = default;
        // Their places in the chooser's lists; 0 when they are not in them.
        [[nodiscard]] int NameIndex() const;
        [[nodiscard]] int PointsIndex() const;
    };

    // bindings: of the window. enabled: whether there is a font to choose.
    FontChooser(Bindings& bindings, const std::function<bool()>& enabled);

    QPushButton* btnFont;
    QCheckBox* chkUsualSize;

    [[nodiscard]] const Choice& Chosen() const { return choice; }
    void SetChoice(const Choice& newChoice);
    // The size in points that suits the pictures of today; what the chooser begins with.
    void SetUsualPoints(int points) { usualPoints = points; }

  signals:
    void Changed();

  private:
    void Choose();
    void Take(const QFont& font, int beginPoints);
    [[nodiscard]] QString Described() const;

    const Bindings& words;
    QLabel* lblFont;
    Choice choice;
    int usualPoints = 12;
};
