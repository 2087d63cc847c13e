#include "overlay_bench.h"

#include "ui/settings/overlay/headed_list.h"

#include <QGroupBox>

namespace {

const QWidget* FrameOf(const QWidget* control) {
    while (control && !qobject_cast<const QGroupBox*>(control)) control = control->parentWidget();
    return control;
}

QPoint PlaceIn(const QWidget& control, const QWidget& window) {
    return control.mapTo(&window, QPoint());
}

bool IsStop(const QWidget& control, const QWidget& window) {
    return (control.focusPolicy() & Qt::TabFocus) != 0 && control.isVisibleTo(&window) &&
           control.isEnabled() && !control.inherits("QAbstractScrollArea") && !control.isWindow() &&
           !control.focusProxy();
}

}  // namespace

QStringList TabFaults(SettingsWindow& window) {
    QWidgetList left;
    for (auto* control : window.findChildren<QWidget*>())
        if (IsStop(*control, window)) left << control;
    QStringList faults;
    QWidget* at = window.focusWidget();
    for (qsizetype steps = 3 * left.size(); at && steps > 0; --steps) {
        left.removeAll(at);
        if (at->accessibleName().isEmpty() && !at->inherits("QPushButton"))
            faults << QString("no name: %1").arg(QLatin1String(at->metaObject()->className()));
        QTest::keyClick(at, Qt::Key_Tab);
        QWidget* const next = window.focusWidget();
        const QPoint from = PlaceIn(*at, window);
        const QPoint to = PlaceIn(*next, window);
        constexpr int sameLine = 12;
        const bool back = to.y() < from.y() - sameLine ||
                          (std::abs(to.y() - from.y()) <= sameLine && to.x() < from.x());
        if (FrameOf(at) && FrameOf(at) == FrameOf(next) && back && !left.isEmpty())
            faults << "back to " + next->accessibleName();
        at = next;
    }
    for (const QWidget* control : std::as_const(left))
        faults << "not reached: " + control->accessibleName();
    return faults;
}

QStringList MissingTexts(const SettingsWindow& window, const Texts& words, const QString& section,
                         const QStringList& keys) {
    QStringList shown = Captions(window);
    for (const HeadedList* list : window.findChildren<HeadedList*>())
        shown << list->Heading() << list->Lines();
    QStringList missing;
    for (const QString& key : keys)
        if (!shown.contains(words.Get(section, key))) missing << key;
    return missing;
}
