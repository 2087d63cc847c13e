#include "base/detached_thread.h"

#include <QSemaphore>

#include <memory>
#include <thread>
#include <utility>

void StartDetached(std::function<void()> work) {
    // Nothing is done before the thread is detached. On Windows the compiler's thread library frees
    // its own part of a thread that is detached in the moment of its end, while that still uses it;
    // the thread then spins for ever and holds up every other one that starts.
    const auto detached = std::make_shared<QSemaphore>();
    std::thread thread([detached, own = std::move(work)] {
        detached->acquire();
        own();
    });
    thread.detach();
    detached->release();
}
