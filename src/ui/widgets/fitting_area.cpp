#include "ui/widgets/fitting_area.h"

#include "ui/widgets/screen_room.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

FittingArea::FittingArea(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);  // it scrolls to the control that has the focus
}

// What the layout needs for its margins and for what stands above and below.
QSize FittingArea::RoomOfOthers(const QLayout& all) const {
    const QMargins margins = all.contentsMargins();
    QSize room(margins.left() + margins.right(), margins.top() + margins.bottom());
    for (int i = 0; i < all.count(); ++i) {
        QLayoutItem& item = *all.itemAt(i);
        if (item.widget() != this && !item.isEmpty())
            room.rheight() += item.minimumSize().height() + all.spacing();
    }
    return room;
}

QSize FittingArea::Most() const {
    const QSize room = ScreenRoom(*window());
    const QLayout* all = window()->layout();
    return all ? room - RoomOfOthers(*all) : room;
}

int FittingArea::Bar() const {
    return verticalScrollBar()->sizeHint().width();
}

QSize FittingArea::minimumSizeHint() const {
    const QSize least = QScrollArea::minimumSizeHint();
    if (!widget()) return least;
    const int inside = widget()->minimumSizeHint().width() + Bar();
    return {qMin(qMax(least.width(), inside), Most().width()), least.height()};
}

QSize FittingArea::sizeHint() const {
    if (!widget()) return QScrollArea::sizeHint();
    // High enough beside a bar, too: the bar of a moment ago would stay for the line that it adds.
    const QSize inside = widget()->sizeHint();
    QSize wanted(inside.width(),
                 widget()->hasHeightForWidth()
                     ? qMax(inside.height(), widget()->heightForWidth(inside.width() - Bar()))
                     : inside.height());
    const QSize most = Most();
    // A bar along one side takes room from the other.
    if (wanted.height() > most.height()) wanted.rwidth() += Bar();
    return wanted.boundedTo(most);
}

void FittingArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    QWidget* focused = window()->focusWidget();
    if (focused && widget() && widget()->isAncestorOf(focused)) ensureWidgetVisible(focused);
}

bool FittingArea::eventFilter(QObject* object, QEvent* event) {
    if (object == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(object, event);
}
