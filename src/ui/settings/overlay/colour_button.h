#pragma once

#include <QColor>
#include <QPushButton>

// A button that shows a colour and opens the toolkit's chooser for another one. While the chooser
// is open every colour pointed at counts, until it is cancelled.
class ColourButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(int number READ Number WRITE SetNumber NOTIFY Changed USER true)

  public:
    explicit ColourButton(QWidget* parent = nullptr);

    [[nodiscard]] QColor Colour() const { return colour; }
    void SetColour(const QColor& newColour);
    // The same as the settings have it: red + 256 x green + 65536 x blue.
    [[nodiscard]] int Number() const;
    void SetNumber(int number);

  signals:
    void Changed();

  private:
    void Choose();

    QColor colour = Qt::black;
};
