#include "ui/widgets/fitting_area.h"

#include <QEvent>
#include <QScreen>

FittingArea::FittingArea(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);  // it scrolls to the control that has the focus
}

QSize FittingArea::sizeHint() const {
    if (!widget()) return QScrollArea::sizeHint();
    const QSize inside = widget()->sizeHint();
    QSize wanted(inside.width(),
                 widget()->hasHeightForWidth()
                     ? qMax(inside.height(), widget()->heightForWidth(inside.width()))
                     : inside.height());
    constexpr int eighths = 8;
    const QSize most = screen()->availableSize() * (eighths - 1) / eighths;
    // A bar along one side takes room from the other.
    const int bar = verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff ? 0 : 20;
    if (wanted.height() > most.height()) wanted.rwidth() += bar;
    return wanted.boundedTo(most);
}

bool FittingArea::eventFilter(QObject* object, QEvent* event) {
    if (object == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(object, event);
}
