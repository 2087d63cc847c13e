#include "ui/dialogs/day_strip.h"

#include "ui/widgets/contrast.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr int lastIndex = DayRecord::Minutes - 1;
constexpr int hour = 60;
constexpr int margin = 3;  // pixels around everything

// Which of the minutes in a column of the screen it shows: no failure is to be lost.
int WeightOf(MinuteState state) {
    switch (state) {
        case MinuteState::NotRunning:
            return 0;
        case MinuteState::OutsideHours:
            return 1;
        case MinuteState::Waiting:
        case MinuteState::Published:
            return 2;
        case MinuteState::CameraGone:
            return 3;
        case MinuteState::Failed:
            return 4;
    }
    return 0;
}

// Of the strip's: so that nobody need tell the colours apart.
double HeightOf(MinuteState state) {
    switch (state) {
        case MinuteState::NotRunning:
            return 0;
        case MinuteState::OutsideHours:
            return 0.15;
        case MinuteState::CameraGone:
            return 0.35;
        case MinuteState::Failed:
            return 0.6;
        case MinuteState::Waiting:
        case MinuteState::Published:
            break;
    }
    return 1;
}

double BytesOf(const MinuteRecord& minute) {
    return minute.Pictures == 0 ? -1 : static_cast<double>(minute.Bytes) / minute.Pictures;
}

double MillisecondsOf(const MinuteRecord& minute) {
    return minute.Pictures == 0 ? -1 : static_cast<double>(minute.Milliseconds) / minute.Pictures;
}

}  // namespace

const QColor DayStrip::SizeColour(0x2b, 0x78, 0xc5);
const QColor DayStrip::DurationColour(0xa0, 0x5c, 0xc8);

DayStrip::DayStrip(QWidget* parent) : QAbstractSlider(parent) {
    setOrientation(Qt::Horizontal);
    setRange(-lastIndex, 0);
    setPageStep(hour);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QAbstractSlider::valueChanged, this, qOverload<>(&QWidget::update));
}

QColor DayStrip::ColourOf(MinuteState state) {
    switch (state) {
        case MinuteState::NotRunning:
            return Qt::transparent;
        case MinuteState::OutsideHours:
            return {0x6b, 0x7f, 0xb3};
        case MinuteState::CameraGone:
            return {0xe0, 0x90, 0x1c};
        case MinuteState::Failed:
            return {0xd0, 0x3a, 0x2b};
        case MinuteState::Waiting:
        case MinuteState::Published:
            break;
    }
    return {0x2e, 0x9e, 0x4f};
}

void DayStrip::Show(const DayRecord& ownRecord, const QDateTime& ownNow) {
    record = ownRecord;
    now = ownNow;
    update();
}

MinuteRecord DayStrip::MinuteAt(int index) const {
    return record.At(record.Last() - lastIndex + index);
}

QDateTime DayStrip::TimeAt(int index) const {
    constexpr qint64 second = 60;
    const QDateTime time = now.addSecs((index - lastIndex) * second);
    return time.addSecs(-time.time().second());
}

double DayStrip::Most(const std::function<double(const MinuteRecord&)>& measure) const {
    double most = 0;
    for (int i = 0; i <= lastIndex; ++i) most = std::max(most, measure(MinuteAt(i)));
    return most;
}

double DayStrip::MostBytes() const {
    return Most(BytesOf);
}

double DayStrip::MostMilliseconds() const {
    return Most(MillisecondsOf);
}

QSize DayStrip::sizeHint() const {
    const int line = fontMetrics().height();
    return {line * 20, line * 6 + 4 * margin};
}

QRect DayStrip::Graph() const {
    return {margin, margin, width() - 2 * margin, fontMetrics().height() * 3};
}

QRect DayStrip::Bars() const {
    const QRect graph = Graph();
    return {graph.left(), graph.bottom() + 1 + margin, graph.width(), fontMetrics().height() * 2};
}

int DayStrip::IndexAt(int x) const {
    const int columns = std::max(1, Bars().width());
    return std::clamp((x - margin) * DayRecord::Minutes / columns, 0, lastIndex);
}

int DayStrip::PlaceOf(int index) const {
    return margin + index * Bars().width() / DayRecord::Minutes;
}

void DayStrip::mouseMoveEvent(QMouseEvent* event) {
    setValue(minimum() + IndexAt(event->position().toPoint().x()));
}

// It is for the window around, which may have to scroll.
void DayStrip::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void DayStrip::focusInEvent(QFocusEvent* event) {
    QAbstractSlider::focusInEvent(event);
    update();
}

void DayStrip::focusOutEvent(QFocusEvent* event) {
    QAbstractSlider::focusOutEvent(event);
    update();
}

DayStrip::Column DayStrip::ColumnOf(int from, int to) const {
    Column column;
    for (int i = from; i < std::max(to, from + 1); ++i) {
        const MinuteRecord minute = MinuteAt(i);
        if (WeightOf(minute.State) > WeightOf(column.State)) column.State = minute.State;
        column.Bytes = std::max(column.Bytes, BytesOf(minute));
        column.Milliseconds = std::max(column.Milliseconds, MillisecondsOf(minute));
    }
    return column;
}

void DayStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int width = Bars().width();
    std::vector<Column> columns;
    columns.reserve(static_cast<std::size_t>(std::max(0, width)));
    for (int x = 0; x < width; ++x)
        columns.push_back(ColumnOf(IndexAt(margin + x), IndexAt(margin + x + 1)));
    painter.setPen(Contrast::Outline(palette()));
    painter.setBrush(palette().base());
    painter.drawRect(Graph().adjusted(-1, -1, 0, 0));
    painter.drawRect(Bars().adjusted(-1, -1, 0, 0));
    PaintBars(painter, columns);
    PaintHours(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintLine(painter, columns, &Column::Bytes, MostBytes(), SizeColour);
    PaintLine(painter, columns, &Column::Milliseconds, MostMilliseconds(), DurationColour);
    painter.setRenderHint(QPainter::Antialiasing, false);
    PaintChoice(painter);
}

void DayStrip::PaintBars(QPainter& painter, const std::vector<Column>& columns) const {
    const QRect area = Bars();
    int x = area.left();
    for (const Column& column : columns) {
        const int height = static_cast<int>(std::lround(area.height() * HeightOf(column.State)));
        painter.fillRect(x++, area.bottom() + 1 - height, 1, height, ColourOf(column.State));
    }
}

// From picture to picture; broken where none could be published between.
void DayStrip::PaintLine(QPainter& painter, const std::vector<Column>& columns, Measure measure,
                         double most, const QColor& colour) const {
    if (most <= 0) return;
    constexpr double room = 0.9;  // the top stays free
    constexpr double dot = 0.5;   // a picture alone is to be seen
    const QRect area = Graph();
    QPainterPath line;
    bool drawn = false;
    double x = area.left() + dot;
    for (const Column& column : columns) {
        const double value = column.*measure;
        const QPointF point(x, area.bottom() - value / most * area.height() * room);
        if (value >= 0 && !drawn) line.moveTo(point - QPointF(dot, 0));
        if (value >= 0) line.lineTo(point);
        const bool well =
            column.State == MinuteState::Published || column.State == MinuteState::Waiting;
        drawn = well && (drawn || value >= 0);
        x += 1;
    }
    constexpr double thickness = 1.5;
    painter.setPen(QPen(colour, thickness));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(line);
}

void DayStrip::PaintHours(QPainter& painter) const {
    const QRect area = Bars();
    const int text = fontMetrics().horizontalAdvance("00:00");
    const int apart = area.width() / 8 > text * 3 / 2 ? 3 : 6;  // hours between two captions
    painter.setPen(palette().color(QPalette::WindowText));
    for (int index = lastIndex - now.time().minute(); index >= 0; index -= hour) {
        const QTime time = TimeAt(index).time();
        if (time.hour() % apart != 0) continue;
        const int x = PlaceOf(index);
        painter.drawLine(x, area.bottom() + 1, x, area.bottom() + 1 + margin);
        const int left = std::clamp(x - text / 2, 0, std::max(0, width() - text));
        painter.drawText(left, area.bottom() + 1 + margin + fontMetrics().ascent(),
                         time.toString("HH:mm"));
    }
}

void DayStrip::PaintChoice(QPainter& painter) const {
    const int x = PlaceOf(Index());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawLine(x, Graph().top(), x, Bars().bottom());
    if (!hasFocus()) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRect(Graph().topLeft(), Bars().bottomRight()).adjusted(-2, -2, 2, 2));
}
