#include "ui/settings/background.h"

#include "base/detached_thread.h"

#include <mutex>
#include <system_error>

struct Background::Link {
    std::mutex Mutex;
    Background* Owner;  // null once it is gone
};

Background::Background(QObject* parent) : QObject(parent), link(std::make_shared<Link>()) {
    link->Owner = this;
}

Background::~Background() {
    const std::lock_guard lock(link->Mutex);
    link->Owner = nullptr;
}

void Background::Run(const Work& work) {
    const auto answer = [work, shared = link, number = ++newest] {
        const std::function<void()> done = work();
        const std::lock_guard lock(shared->Mutex);
        Background* const owner = shared->Owner;
        if (!owner) return;
        QMetaObject::invokeMethod(
            owner,
            [owner, done, number] {
                if (owner->newest == number) done();
            },
            Qt::QueuedConnection);
    };
    try {
        StartDetached(answer);
    } catch (const std::system_error&) {
        answer();
    }
}
