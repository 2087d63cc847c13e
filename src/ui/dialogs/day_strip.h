#pragma once

#include "core/day_record.h"

#include <QAbstractSlider>
#include <QColor>
#include <QDateTime>

#include <functional>
#include <vector>

class QPainter;

// The last 24 hours as a picture: a bar for each minute, as high and in the colour of what the
// program did; above it, as lines, how large the pictures were and how long their uploads took. The
// slider's value is the minute that is looked at, 0 now and -60 an hour ago, which the mouse and
// the arrow keys move.
class DayStrip : public QAbstractSlider {
    Q_OBJECT

  public:
    explicit DayStrip(QWidget* parent);

    // now: the time of day that belongs to the last minute of the record.
    void Show(const DayRecord& ownRecord, const QDateTime& ownNow);

    // What is looked at: the minute, and the time of day at its beginning.
    [[nodiscard]] MinuteRecord Minute() const { return MinuteAt(Index()); }
    [[nodiscard]] QDateTime Time() const { return TimeAt(Index()); }
    // What the lines reach at most: bytes of a picture, milliseconds of its upload.
    [[nodiscard]] double MostBytes() const;
    [[nodiscard]] double MostMilliseconds() const;

    [[nodiscard]] static QColor ColourOf(MinuteState state);
    static const QColor SizeColour;
    static const QColor DurationColour;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { mouseMoveEvent(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { mouseMoveEvent(event); }
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    // What a column of the screen shows: of several minutes the worst one.
    struct Column {
        MinuteState State = MinuteState::NotRunning;
        double Bytes = -1;  // of a picture; below 0: none was published
        double Milliseconds = -1;
    };
    using Measure = double Column::*;

    [[nodiscard]] MinuteRecord MinuteAt(int index) const;
    [[nodiscard]] QDateTime TimeAt(int index) const;
    [[nodiscard]] int Index() const { return value() - minimum(); }
    [[nodiscard]] int IndexAt(int x) const;
    [[nodiscard]] int PlaceOf(int index) const;
    [[nodiscard]] Column ColumnOf(int from, int to) const;
    [[nodiscard]] double Most(const std::function<double(const MinuteRecord&)>& measure) const;
    [[nodiscard]] QRect Bars() const;
    [[nodiscard]] QRect Graph() const;
    void PaintBars(QPainter& painter, const std::vector<Column>& columns) const;
    void PaintLine(QPainter& painter, const std::vector<Column>& columns, Measure measure,
                   double most, const QColor& colour) const;
    void PaintHours(QPainter& painter) const;
    void PaintChoice(QPainter& painter) const;

    DayRecord record;
    QDateTime now;
};
