#include "ui/widgets/fitting_area.h"

#include "ui/widgets/screen_room.h"

#include <QEvent>
#include <QLayout>

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

QSize FittingArea::sizeHint() const {
    if (!widget()) return QScrollArea::sizeHint();
    const QSize inside = widget()->sizeHint();
    QSize wanted(inside.width(),
                 widget()->hasHeightForWidth()
                     ? qMax(inside.height(), widget()->heightForWidth(inside.width()))
                     : inside.height());
    QSize most = ScreenRoom(*window());
    if (const QLayout* all = window()->layout()) most -= RoomOfOthers(*all);
    // A bar along one side takes room from the other.
    const int bar = verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff ? 0 : 20;
    if (wanted.height() > most.height()) wanted.rwidth() += bar;
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
