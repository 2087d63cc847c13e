#include "ui/widgets/drop_target.h"

#include "base/paths.h"

#include <QAbstractScrollArea>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

DropTarget::DropTarget(QWidget* control, Takes kind,
                       std::function<void(const QStringList&)> whenDropped)
    : QObject(control), takes(kind), dropped(std::move(whenDropped)) {
    auto* area = qobject_cast<QAbstractScrollArea*>(control);
    QWidget* target = area ? area->viewport() : control;
    target->setAcceptDrops(true);
    target->installEventFilter(this);
}

QStringList DropTarget::Wanted(const QMimeData& data) const {
    QStringList wanted;
    const bool addresses = takes == Takes::Addresses;
    const QList<QUrl> urls = data.urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            wanted << (addresses ? Paths::Native(url.toLocalFile()) : url.toLocalFile());
        else if (addresses)
            wanted << QString::fromUtf8(url.toEncoded());
    }
    const QString line = data.text().trimmed().section(u'\n', 0, 0).trimmed();
    const bool address = line.contains("://") || line.startsWith("test:");
    if (addresses && wanted.isEmpty() && address) wanted << line;
    return wanted;
}

bool DropTarget::Take(QDropEvent& event, bool drop) const {
    const QStringList wanted = Wanted(*event.mimeData());
    if (wanted.isEmpty()) return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (drop) dropped(wanted);
    return true;
}

bool DropTarget::eventFilter(QObject* object, QEvent* event) {
    const QEvent::Type kind = event->type();
    if (kind != QEvent::DragEnter && kind != QEvent::DragMove && kind != QEvent::Drop)
        return QObject::eventFilter(object, event);
    auto& drop = static_cast<QDropEvent&>(*event);
    const QObject* source = drop.source();
    const bool own = source && (source == object || source == parent());
    return !own && Take(drop, kind == QEvent::Drop);
}
