#pragma once

#include <QComboBox>

// A list to choose from whose first line is a heading. The lines below it are counted from 0.
class HeadedList : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(int place READ Place WRITE SetPlace NOTIFY PlaceChanged USER true)

  public:
    explicit HeadedList(QWidget* parent = nullptr);

    // The line that is chosen stays chosen.
    void SetTexts(const QString& heading, const QStringList& lines);
    [[nodiscard]] QString Heading() const { return itemText(0); }
    [[nodiscard]] QStringList Lines() const;

    [[nodiscard]] int Place() const { return currentIndex() - 1; }
    void SetPlace(int place) { setCurrentIndex(place + 1); }

  signals:
    // The operator or the program has chosen another line.
    void PlaceChanged(int place);
};
