#pragma once

#include <QSpinBox>

#include <optional>

// A field for a whole number that cannot leave its range. Left empty it takes its usual number.
class NumberBox : public QSpinBox {
    Q_OBJECT

  public:
    explicit NumberBox(QWidget* parent = nullptr);

    void SetUsual(int number) { usual = number; }

    void fixup(QString& typed) const override;

  private:
    std::optional<int> usual;
};
