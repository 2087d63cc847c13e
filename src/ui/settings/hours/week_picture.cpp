#include "ui/settings/hours/week_picture.h"

#include "ui/widgets/contrast.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int hours = 24;
constexpr int minutesOfHour = 60;
constexpr int margin = 3;       // pixels
constexpr int captionEach = 3;  // hours
const QColor hourColour(0x2e, 0x9e, 0x4f);
const QColor lightColour(0xe0, 0xa8, 0x1c);
const QColor offColour(0x7c, 0x88, 0x8d);

}  // namespace

WeekPicture::WeekPicture(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    for (int day = 1; day <= WeekHours::Days; ++day) dayNames << QString();
}

void WeekPicture::Show(const WeekHours& shown, bool light) {
    week = shown;
    isLight = light;
    update();
}

void WeekPicture::SetDayNames(const QStringList& names) {
    dayNames = names;
    updateGeometry();
    update();
}

QSize WeekPicture::minimumSizeHint() const {
    const int line = fontMetrics().height();
    constexpr int narrowest = 9;  // pixels of an hour that a finger or a mouse still hits
    return {Area().left() + hours * narrowest + line,
            (WeekHours::Days + 1) * (line + margin) + margin};
}

QSize WeekPicture::sizeHint() const {
    const QSize least = minimumSizeHint();
    return {std::max(least.width(), fontMetrics().height() * 26), least.height()};
}

QRect WeekPicture::Area() const {
    int names = 0;
    for (const QString& name : dayNames)
        names = std::max(names, fontMetrics().horizontalAdvance(name));
    const int left = names + 2 * margin;
    const int top = fontMetrics().height() + margin;
    // Half a caption of the last hour stands beyond it.
    const int right = fontMetrics().horizontalAdvance("24") / 2 + margin;
    return {left, top, width() - left - right, WeekHours::Days * top};
}

QRect WeekPicture::CellAt(int day, int hour) const {
    const QRect area = Area();
    const int left = area.left() + hour * area.width() / hours;
    const int right = area.left() + (hour + 1) * area.width() / hours;
    const int row = area.height() / WeekHours::Days;
    return {left, area.top() + (day - 1) * row, right - left, row};
}

WeekPicture::Cell WeekPicture::CellUnder(const QPoint& place) const {
    const QRect area = Area();
    const int row = (place.y() - area.top()) * WeekHours::Days / std::max(1, area.height());
    int hour = 0;
    while (hour < hours - 1 && place.x() > CellAt(1, hour).right()) ++hour;
    return {std::clamp(row, 0, WeekHours::Days - 1) + 1, hour};
}

bool WeekPicture::Holds(const Cell& cell) const {
    for (int minute = 0; minute < minutesOfHour; ++minute)
        if (!week.Holds(cell.Day, cell.Hour * minutesOfHour + minute)) return false;
    return true;
}

void WeekPicture::Put(const Cell& cell, bool in) {
    week.Set(cell.Day, cell.Hour * minutesOfHour, (cell.Hour + 1) * minutesOfHour, in);
}

void WeekPicture::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    before = week;
    cursor = first = CellUnder(event->position().toPoint());
    painting = !Holds(first);
    PaintBlock();
}

void WeekPicture::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) return;
    cursor = CellUnder(event->position().toPoint());
    PaintBlock();
}

// From where the mouse was pressed to where it is now.
void WeekPicture::PaintBlock() {
    week = before;
    const auto [top, bottom] = std::minmax(first.Day, cursor.Day);
    const auto [left, right] = std::minmax(first.Hour, cursor.Hour);
    for (int day = top; day <= bottom; ++day)
        for (int hour = left; hour <= right; ++hour) Put({day, hour}, painting);
    update();
    emit Painted();
    Tell();
}

void WeekPicture::keyPressEvent(QKeyEvent* event) {
    const Cell from = cursor;
    const int key = event->key();
    if (key == Qt::Key_Left) cursor.Hour = std::max(0, cursor.Hour - 1);
    if (key == Qt::Key_Right) cursor.Hour = std::min(hours - 1, cursor.Hour + 1);
    if (key == Qt::Key_Home) cursor.Hour = 0;
    if (key == Qt::Key_End) cursor.Hour = hours - 1;
    if (key == Qt::Key_Up) cursor.Day = std::max(1, cursor.Day - 1);
    if (key == Qt::Key_Down) cursor.Day = std::min(WeekHours::Days, cursor.Day + 1);
    const bool moves = key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Home ||
                       key == Qt::Key_End || key == Qt::Key_Up || key == Qt::Key_Down;
    const bool paints =
        key == Qt::Key_Space || (moves && event->modifiers().testFlag(Qt::ShiftModifier));
    if (!moves && !paints) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (paints) {
        Put(cursor, moves ? Holds(from) : !Holds(cursor));
        emit Painted();
    }
    update();
    Tell();
}

void WeekPicture::Tell() {
    const auto time = [](int hour) {
        return QString::number(hour).rightJustified(2, u'0') + ":00";
    };
    emit Moved(dayNames.at(cursor.Day - 1) + " " + time(cursor.Hour) + "-" + time(cursor.Hour + 1),
               Holds(cursor));
}

void WeekPicture::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
    Tell();
}

void WeekPicture::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

void WeekPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(Area(), palette().base());
    for (int day = 1; day <= WeekHours::Days; ++day) PaintDay(painter, day);
    PaintGrid(painter);
    if (!hasFocus()) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(CellAt(cursor.Day, cursor.Hour).adjusted(1, 1, -1, -1));
}

void WeekPicture::PaintDay(QPainter& painter, int day) const {
    const QRect area = Area();
    const QRect row = CellAt(day, 0);
    const auto placeOf = [&](int minute) {
        return area.left() + minute * area.width() / WeekHours::MinutesOfDay;
    };
    const QColor colour = isLight ? lightColour : isEnabled() ? hourColour : offColour;
    for (int from = 0; from < WeekHours::MinutesOfDay; ++from) {
        if (!week.Holds(day, from)) continue;
        int to = from;
        while (to < WeekHours::MinutesOfDay && week.Holds(day, to)) ++to;
        const int left = placeOf(from);
        painter.fillRect(left, row.top(), std::max(1, placeOf(to) - left), row.height(), colour);
        from = to;
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(0, row.top(), area.left() - margin, row.height()),
                     Qt::AlignRight | Qt::AlignVCenter, dayNames.at(day - 1));
}

void WeekPicture::PaintGrid(QPainter& painter) const {
    const QRect area = Area();
    QColor thin = palette().color(QPalette::WindowText);
    constexpr int faint = 50;
    thin.setAlpha(faint);
    for (int hour = 0; hour <= hours; ++hour) {
        const int x = area.left() + hour * area.width() / hours;
        painter.setPen(thin);
        painter.drawLine(x, area.top(), x, area.bottom());
        if (hour % captionEach != 0) continue;
        painter.setPen(palette().color(QPalette::WindowText));
        const QString text = QString::number(hour);
        painter.drawText(x - fontMetrics().horizontalAdvance(text) / 2, fontMetrics().ascent(),
                         text);
    }
    painter.setPen(thin);
    for (int day = 2; day <= WeekHours::Days; ++day)
        painter.drawLine(area.left(), CellAt(day, 0).top(), area.right(), CellAt(day, 0).top());
    painter.setPen(Contrast::Outline(palette()));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area.adjusted(-1, -1, 0, 0));
}
