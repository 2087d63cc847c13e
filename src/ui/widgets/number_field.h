#pragma once

#include <QLineEdit>

#include <optional>

// A field for a whole number in a range. Anything may be typed, so that a wrong number can be
// mended letter by letter; what is wrong is marked at once and told by the window, see
// SettingsWindow. The accessible name is the caption that the message names.
class NumberField : public QLineEdit {
    Q_OBJECT

  public:
    // Both ends belong to the range.
    NumberField(int least, int most, QWidget* parent = nullptr);

    [[nodiscard]] int Least() const { return least; }
    [[nodiscard]] int Most() const { return most; }
    // The number that an empty field stands for; without one an empty field is refused.
    void SetWhenEmpty(int number) { whenEmpty = number; }

    // Nothing when what is typed is no whole number in the range.
    [[nodiscard]] std::optional<int> Value() const;
    void SetValue(int number) { setText(QString::number(number)); }

    [[nodiscard]] QSize sizeHint() const override;

  private:
    void Mark();

    int least;
    int most;
    std::optional<int> whenEmpty;
};
