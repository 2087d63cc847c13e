#pragma once

#include "core/schedule/hours.h"

#include <QStringList>
#include <QWidget>

// The hours of a week as a picture, a row for each day. They are painted by mouse, over as many
// hours and days as it is dragged across, or by keyboard: the arrow keys go from hour to hour,
// Space puts it in or takes it out, with Shift the hour that is gone to becomes what the last was.
class WeekPicture : public QWidget {
    Q_OBJECT

  public:
    explicit WeekPicture(QWidget* parent = nullptr);

    // light: they are those of the sun.
    void Show(const WeekHours& shown, bool light = false);
    [[nodiscard]] const WeekHours& Week() const { return week; }
    // Of the days from Monday on.
    void SetDayNames(const QStringList& names);
    // Where an hour of a day (1 to 7) is, in pixels.
    [[nodiscard]] QRect CellAt(int day, int hour) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    // The operator has painted.
    void Painted();
    // The keyboard is at another hour, or the hour has changed: "Mo 06:00-07:00", and whether it is
    // one of them.
    void Moved(const QString& hour, bool in);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    struct Cell {
        int Day = 1;
        int Hour = 0;
    };
    [[nodiscard]] QRect Area() const;
    [[nodiscard]] Cell CellUnder(const QPoint& place) const;
    [[nodiscard]] bool Holds(const Cell& cell) const;
    void Put(const Cell& cell, bool in);
    void PaintBlock();
    void Tell();
    void PaintDay(QPainter& painter, int day) const;
    void PaintGrid(QPainter& painter) const;

    WeekHours week;
    bool isLight = false;
    QStringList dayNames;
    Cell cursor;
    // While the mouse paints: what was there before, where it began, and with what.
    WeekHours before;
    Cell first;
    bool painting = true;
};
