#pragma once

#include <QMutex>
#include <QObject>

#include <functional>
#include <memory>

// Does the work on another thread, which nobody waits for: neither here nor at the program's end.
// Work that never ends keeps its thread and holds up nothing else. Begins later where too many
// files are open.
void StartDetached(std::function<void()> work);

// The way from such a thread back to an object that may be gone by then. Copies lead to the same
// object.
class WayBack {
  public:
    explicit WayBack(QObject& target);

    // On the object's thread, before it goes: nothing arrives any more, not even what is under way.
    void Close() const;
    // On any thread: has the event happen on the object's thread, unless the way is closed.
    void Post(std::function<void()> event) const;

  private:
    struct Link {
        QMutex Mutex;
        QObject* Target;  // null once closed
    };
    std::shared_ptr<Link> link;
};
