#pragma once

#include <QColor>
#include <QPushButton>

// A button that shows a colour and opens the toolkit's chooser for another one. While the chooser
// is open every colour pointed at counts, until it is cancelled.
class ColourButton : public QPushButton {
    Q_OBJECT

  public:
    explicit ColourButton(QWidget* parent = nullptr);

    [[nodiscard]] QColor Colour() const { return colour; }
    void SetColour(const QColor& newColour);

  signals:
    void Changed();

  private:
    void Choose();

    QColor colour = Qt::black;
};

// The number of a colour in the settings: red + 256 x green + 65536 x blue.
[[nodiscard]] int ColourNumber(const QColor& colour);
