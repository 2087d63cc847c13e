#include "base/detached_thread.h"

#include "base/open_files.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <QTimer>

#include <limits>
#include <utility>

// A pool's threads wait for the next work instead of ending. It is never destroyed, because that
// would wait for work that hangs.
void StartDetached(std::function<void()> work) {
    static QThreadPool* const pool = [] {
        auto* const made = new QThreadPool;
        made->setMaxThreadCount(std::numeric_limits<int>::max());
        made->setExpiryTimeout(-1);
        return made;
    }();
    if (FilesLeft()) return pool->start(std::move(work));
    constexpr int pause = 100;  // milliseconds
    QTimer::singleShot(pause, QCoreApplication::instance(),
                       [later = std::move(work)] { StartDetached(later); });
}

WayBack::WayBack(QObject& target) : link(std::make_shared<Link>()) {
    link->Target = &target;
}

void WayBack::Close() const {
    const QMutexLocker lock(&link->Mutex);
    link->Target = nullptr;
}

void WayBack::Post(std::function<void()> event) const {
    // Held while the event is queued: the object stays as long.
    const QMutexLocker lock(&link->Mutex);
    if (!link->Target) return;
    QMetaObject::invokeMethod(
        link->Target,
        [own = link, event = std::move(event)] {
            // Closed on this thread only, so it cannot change now.
            if (own->Target) event();
        },
        Qt::QueuedConnection);
}
