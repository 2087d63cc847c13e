#pragma once

#include "core/day_record.h"

#include <QWidget>

class DayStrip;
class QLabel;
class Texts;

// The last 24 hours for the overview: the strip, what the minute looked at was like in words, and
// what the colours mean.
class DayView : public QWidget {
    Q_OBJECT

  public:
    // ownTexts outlives the view.
    DayView(const Texts& ownTexts, QWidget* parent);

    DayStrip* Strip;
    QLabel* lblMinute;

    void Show(const DayRecord& record, const QDateTime& now);
    // In the language in use.
    void ShowTexts();

  private:
    struct Entry {
        QString Key;
        QColor Colour;
        QLabel* Mark;
        QLabel* Meaning;
    };

    void AddLegend();
    void ShowMost();
    void ShowMinute();
    [[nodiscard]] QString Words() const;
    [[nodiscard]] QString Text(const QString& key) const;

    const Texts& texts;
    QLabel* title;
    QList<Entry> legend;
};
